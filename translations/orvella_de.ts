<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de" sourcelanguage="en">
<context>
    <name>AtomicFile</name>
    <message>
        <source>A file could not be written: %1.</source>
        <translation>Eine Datei konnte nicht geschrieben werden: %1.</translation>
    </message>
</context>
<context>
    <name>AutostartLoginItem</name>
    <message>
        <source>The entry for starting at login could not be removed: %1.</source>
        <translation>Der Eintrag für den Start beim Anmelden konnte nicht entfernt werden: %1.</translation>
    </message>
</context>
<context>
    <name>CommandLine</name>
    <message>
        <source>Unexpected argument &apos;%1&apos;.</source>
        <translation>Unerwartetes Argument „%1“.</translation>
    </message>
    <message>
        <source>The folder of the profile has no name.</source>
        <translation>Der Ordner des Profils hat keinen Namen.</translation>
    </message>
    <message>
        <source>Only one of these options can be used: %1.</source>
        <translation>Von diesen Optionen ist nur eine möglich: %1.</translation>
    </message>
</context>
<context>
    <name>CurlTransport</name>
    <message>
        <source>The server&apos;s certificate belongs to another server.</source>
        <translation>Das Zertifikat des Servers gehört zu einem anderen Server.</translation>
    </message>
    <message>
        <source>The server&apos;s certificate is not valid yet.</source>
        <translation>Das Zertifikat des Servers ist noch nicht gültig.</translation>
    </message>
    <message>
        <source>The server&apos;s certificate has expired.</source>
        <translation>Das Zertifikat des Servers ist abgelaufen.</translation>
    </message>
    <message>
        <source>The server&apos;s certificate is not trusted.</source>
        <translation>Das Zertifikat des Servers ist nicht vertrauenswürdig.</translation>
    </message>
    <message>
        <source>The server could not be found.</source>
        <translation>Der Server wurde nicht gefunden.</translation>
    </message>
    <message>
        <source>The proxy could not be found.</source>
        <translation>Der Proxy wurde nicht gefunden.</translation>
    </message>
    <message>
        <source>The proxy did not connect to the server.</source>
        <translation>Der Proxy hat keine Verbindung zum Server hergestellt.</translation>
    </message>
    <message>
        <source>The server could not be reached.</source>
        <translation>Der Server ist nicht erreichbar.</translation>
    </message>
    <message>
        <source>The connection to the server was lost.</source>
        <translation>Die Verbindung zum Server ist abgebrochen.</translation>
    </message>
    <message>
        <source>No secure connection to the server could be made.</source>
        <translation>Es konnte keine sichere Verbindung zum Server hergestellt werden.</translation>
    </message>
    <message>
        <source>The computer&apos;s list of trusted certificates could not be read.</source>
        <translation>Die Liste vertrauenswürdiger Zertifikate des Computers konnte nicht gelesen werden.</translation>
    </message>
    <message>
        <source>The request timed out.</source>
        <translation>Die Zeit für die Anfrage ist abgelaufen.</translation>
    </message>
    <message>
        <source>The server&apos;s answer could not be understood.</source>
        <translation>Die Antwort des Servers ist unverständlich.</translation>
    </message>
    <message>
        <source>The server&apos;s answer was too large.</source>
        <translation>Die Antwort des Servers ist zu groß.</translation>
    </message>
    <message>
        <source>The server&apos;s address is not valid.</source>
        <translation>Die Adresse des Servers ist ungültig.</translation>
    </message>
    <message>
        <source>The request to the server did not succeed.</source>
        <translation>Die Anfrage an den Server ist fehlgeschlagen.</translation>
    </message>
    <message>
        <source>The request could not be written.</source>
        <translation>Die Anfrage konnte nicht geschrieben werden.</translation>
    </message>
</context>
<context>
    <name>Json</name>
    <message>
        <source>The text is not valid JSON.</source>
        <translation>Der Text ist kein gültiges JSON.</translation>
    </message>
    <message>
        <source>The text could not be written as JSON.</source>
        <translation>Der Text konnte nicht als JSON geschrieben werden.</translation>
    </message>
</context>
<context>
    <name>KeyringSession</name>
    <message>
        <source>Orvella (%1)</source>
        <translation>Orvella (%1)</translation>
    </message>
    <message>
        <source>Default keyring</source>
        <translation>Standard-Schlüsselbund</translation>
    </message>
</context>
<context>
    <name>OverlaySettings</name>
    <message>
        <source>&quot;%1&quot; is not of the form KEY=VALUE.</source>
        <translation>„%1“ hat nicht die Form KEY=VALUE.</translation>
    </message>
</context>
<context>
    <name>PluginUpdater</name>
    <message>
        <source>The part of Orvella that looks for updates does not fit this version. Look for updates in your software centre.</source>
        <translation>Der Teil von Orvella, der nach Aktualisierungen sucht, passt nicht zu dieser Version. Suchen Sie in Ihrer Softwareverwaltung nach Aktualisierungen.</translation>
    </message>
    <message>
        <source>Orvella was updated while it was running. Quit it and start it again before you look for updates.</source>
        <translation>Orvella wurde aktualisiert, während es lief. Beenden Sie es und starten Sie es neu, bevor Sie nach Aktualisierungen suchen.</translation>
    </message>
    <message>
        <source>This Orvella is a Flatpak, and Flatpak brings its updates. Look for them in your software centre.</source>
        <translation>Dieses Orvella ist ein Flatpak, und Flatpak bringt seine Aktualisierungen. Suchen Sie in Ihrer Softwareverwaltung danach.</translation>
    </message>
    <message>
        <source>This Orvella is an AppImage, which is a single file. A newer version is a newer file: get it where you got this one.</source>
        <translation>Dieses Orvella ist ein AppImage, also eine einzelne Datei. Eine neuere Version ist eine neuere Datei: Sie bekommen sie dort, wo Sie diese herhaben.</translation>
    </message>
    <message>
        <source>If Orvella came with the packages of your system, it is updated together with them: look for updates in your software centre. Otherwise get a newer version where you got this one.</source>
        <translation>Wenn Orvella aus den Paketen Ihres Systems stammt, wird es zusammen mit ihnen aktualisiert: Suchen Sie in Ihrer Softwareverwaltung nach Aktualisierungen. Andernfalls bekommen Sie eine neuere Version dort, wo Sie diese herhaben.</translation>
    </message>
</context>
<context>
    <name>PortalLoginItem</name>
    <message>
        <source>The desktop does not let Orvella start at login.</source>
        <translation>Der Desktop lässt Orvella beim Anmelden nicht starten.</translation>
    </message>
    <message>
        <source>The desktop cannot change whether Orvella starts at login.</source>
        <translation>Der Desktop kann nicht ändern, ob Orvella beim Anmelden startet.</translation>
    </message>
    <message>
        <source>Orvella waits in the desktop&apos;s bar until there is an ad.</source>
        <translation>Orvella wartet in der Leiste des Desktops, bis es eine Anzeige gibt.</translation>
    </message>
</context>
<context>
    <name>Record</name>
    <message>
        <source>is not true or false</source>
        <translation>ist weder wahr noch falsch</translation>
    </message>
    <message>
        <source>is not an integer</source>
        <translation>ist keine ganze Zahl</translation>
    </message>
    <message>
        <source>is not a number</source>
        <translation>ist keine Zahl</translation>
    </message>
    <message>
        <source>is not a text</source>
        <translation>ist kein Text</translation>
    </message>
    <message>
        <source>is not a list</source>
        <translation>ist keine Liste</translation>
    </message>
    <message>
        <source>is missing</source>
        <translation>fehlt</translation>
    </message>
    <message>
        <source>is not an object</source>
        <translation>ist kein Objekt</translation>
    </message>
    <message>
        <source>is not JSON</source>
        <translation>ist kein JSON</translation>
    </message>
    <message>
        <source>The service&apos;s answer could not be read: it %1.</source>
        <translation>Die Antwort des Dienstes konnte nicht gelesen werden: Sie %1.</translation>
    </message>
    <message>
        <source>The service&apos;s answer could not be read: %1 %2.</source>
        <translation>Die Antwort des Dienstes konnte nicht gelesen werden: %1 %2.</translation>
    </message>
</context>
<context>
    <name>ServiceCall</name>
    <message>
        <source>The service could not answer the request.</source>
        <translation>Der Dienst konnte die Anfrage nicht beantworten.</translation>
    </message>
    <message>
        <source>The network answers in place of the service. You may have to sign in to it first.</source>
        <translation>Das Netzwerk antwortet anstelle des Dienstes. Möglicherweise müssen Sie sich dort erst anmelden.</translation>
    </message>
</context>
<context>
    <name>UpdateTexts</name>
    <message>
        <source>Preparing the installation…</source>
        <translation>Installation wird vorbereitet …</translation>
    </message>
    <message>
        <source>Waiting until your system is done with other installations…</source>
        <translation>Warten, bis Ihr System andere Installationen abgeschlossen hat …</translation>
    </message>
    <message>
        <source>Waiting for your permission…</source>
        <translation>Warten auf Ihre Erlaubnis …</translation>
    </message>
    <message>
        <source>Downloading…</source>
        <translation>Wird heruntergeladen …</translation>
    </message>
    <message>
        <source>Installing…</source>
        <translation>Wird installiert …</translation>
    </message>
    <message>
        <source>It was cancelled.</source>
        <translation>Der Vorgang wurde abgebrochen.</translation>
    </message>
    <message>
        <source>PackageKit, which installs updates, is not there. Look for updates in your software centre.</source>
        <translation>PackageKit, das Aktualisierungen installiert, ist nicht vorhanden. Suchen Sie in Ihrer Softwareverwaltung nach Aktualisierungen.</translation>
    </message>
    <message>
        <source>Your system did not allow it.</source>
        <translation>Ihr System hat es nicht erlaubt.</translation>
    </message>
    <message>
        <source>There is no network.</source>
        <translation>Es besteht keine Netzwerkverbindung.</translation>
    </message>
    <message>
        <source>Another program is installing software. Try again when it is done.</source>
        <translation>Ein anderes Programm installiert gerade Software. Versuchen Sie es erneut, wenn es fertig ist.</translation>
    </message>
    <message>
        <source>The update is not signed by a source that your system trusts.</source>
        <translation>Die Aktualisierung ist nicht von einer Quelle signiert, der Ihr System vertraut.</translation>
    </message>
    <message>
        <source>The update would remove other programs. Your software centre shows which ones.</source>
        <translation>Die Aktualisierung würde andere Programme entfernen. Ihre Softwareverwaltung zeigt, welche.</translation>
    </message>
    <message>
        <source>This Orvella did not come with the packages of your system, so they do not bring its updates.</source>
        <translation>Dieses Orvella stammt nicht aus den Paketen Ihres Systems, daher bringen diese auch keine Aktualisierungen dafür.</translation>
    </message>
    <message>
        <source>Your system&apos;s package service does not answer.</source>
        <translation>Der Paketdienst Ihres Systems antwortet nicht.</translation>
    </message>
    <message>
        <source>Your system&apos;s package service ended before it was done.</source>
        <translation>Der Paketdienst Ihres Systems wurde vorzeitig beendet.</translation>
    </message>
    <message>
        <source>Your system&apos;s package service reports an error.</source>
        <translation>Der Paketdienst Ihres Systems meldet einen Fehler.</translation>
    </message>
    <message>
        <source>Your system&apos;s package service reports: %1</source>
        <translation>Der Paketdienst Ihres Systems meldet: %1</translation>
    </message>
    <message>
        <source>Looking for a newer version…</source>
        <translation>Es wird nach einer neueren Version gesucht …</translation>
    </message>
    <message>
        <source>Orvella is up to date.</source>
        <translation>Orvella ist auf dem neuesten Stand.</translation>
    </message>
    <message>
        <source>Version %1 is available.</source>
        <translation>Version %1 ist verfügbar.</translation>
    </message>
    <message>
        <source>Installing version %1…</source>
        <translation>Version %1 wird installiert …</translation>
    </message>
    <message>
        <source>Version %1 is installed.</source>
        <translation>Version %1 ist installiert.</translation>
    </message>
    <message>
        <source>Orvella could not look for updates.</source>
        <translation>Orvella konnte nicht nach Aktualisierungen suchen.</translation>
    </message>
    <message>
        <source>Version %1 could not be installed.</source>
        <translation>Version %1 konnte nicht installiert werden.</translation>
    </message>
    <message>
        <source>You have version %1.</source>
        <translation>Sie haben Version %1.</translation>
    </message>
    <message>
        <source>You have version %1. The list of packages could not be renewed, so there may be a newer one.</source>
        <translation>Sie haben Version %1. Die Paketliste konnte nicht erneuert werden; vielleicht gibt es eine neuere.</translation>
    </message>
    <message>
        <source>Your system is set to keep version %1.</source>
        <translation>Ihr System ist so eingestellt, dass es Version %1 behält.</translation>
    </message>
    <message>
        <source>It takes effect when Orvella is started again.</source>
        <translation>Sie wird wirksam, wenn Orvella neu gestartet wird.</translation>
    </message>
</context>
<context>
    <name>orvella::AdDisclosure</name>
    <message>
        <source>Broad delivery matched your language. No app category was used.</source>
        <translation>Breit ausgelieferte Anzeige in Ihrer Sprache. Es wurde keine App-Kategorie verwendet.</translation>
    </message>
    <message>
        <source>Matched using consented broad categories: %1. Raw app names were not sent.</source>
        <translation>Zugeordnet anhand allgemeiner Kategorien, in die Sie eingewilligt haben: %1. Die Namen der Apps wurden nicht gesendet.</translation>
    </message>
    <message>
        <source>Paid ad by %1</source>
        <translation>Bezahlte Anzeige von %1</translation>
    </message>
    <message>
        <source>Change category matching from the Orvella menu. Anonymous mode disables category targeting.</source>
        <translation>Die Zuordnung nach Kategorien lässt sich im Menü von Orvella ändern. Der anonyme Modus schaltet sie aus.</translation>
    </message>
</context>
<context>
    <name>orvella::AdWindowController</name>
    <message>
        <source>Ad</source>
        <translation>Anzeige</translation>
    </message>
    <message>
        <source>Ad information</source>
        <translation>Informationen zur Anzeige</translation>
    </message>
</context>
<context>
    <name>orvella::AdWindowView</name>
    <message>
        <source>Paid</source>
        <translation>Vergütet</translation>
    </message>
    <message>
        <source>Open ad: %1</source>
        <translation>Anzeige öffnen: %1</translation>
    </message>
    <message>
        <source>Why you are seeing this ad</source>
        <translation>Warum Sie diese Anzeige sehen</translation>
    </message>
    <message>
        <source>Ad information</source>
        <translation>Informationen zur Anzeige</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Schließen</translation>
    </message>
    <message>
        <source>Dismiss without earning</source>
        <translation>Ohne Verdienst schließen</translation>
    </message>
    <message>
        <source>Close ad</source>
        <translation>Anzeige schließen</translation>
    </message>
    <message>
        <source>Dismiss ad without earning</source>
        <translation>Anzeige ohne Verdienst schließen</translation>
    </message>
</context>
<context>
    <name>orvella::BalancesView</name>
    <message>
        <source>Available</source>
        <translation>Verfügbar</translation>
    </message>
    <message>
        <source>Pending</source>
        <translation>Ausstehend</translation>
    </message>
    <message>
        <source>Lifetime</source>
        <translation>Insgesamt</translation>
    </message>
    <message>
        <source>Paid out</source>
        <translation>Ausgezahlt</translation>
    </message>
    <message>
        <source>Last ad</source>
        <translation>Letzte Anzeige</translation>
    </message>
</context>
<context>
    <name>orvella::CountdownGauge</name>
    <message>
        <source>Ad time remaining</source>
        <translation>Verbleibende Zeit der Anzeige</translation>
    </message>
    <message>
        <source>%1 seconds</source>
        <translation>%1 Sekunden</translation>
    </message>
</context>
<context>
    <name>orvella::LaunchWindowView</name>
    <message>
        <source>Orvella is running</source>
        <translation>Orvella läuft</translation>
    </message>
    <message>
        <source>The app lives in your Mac menu bar and opens at login.</source>
        <translation>Die App lebt in der Leiste Ihres Desktops und startet beim Anmelden.</translation>
    </message>
    <message>
        <source>Look for $ in the top bar.</source>
        <translation>Achten Sie auf $ in der Leiste.</translation>
    </message>
    <message>
        <source>When it changes to green $ AD, an ad is available.</source>
        <translation>Wird daraus ein grünes $ AD, ist eine Anzeige verfügbar.</translation>
    </message>
    <message>
        <source>Click $ to open the ad. Auto open still works even if macOS hides it.</source>
        <translation>Klick auf $ öffnet die Anzeige. Automatisch geht es auch, wenn $ verborgen ist.</translation>
    </message>
    <message>
        <source>Orvella keeps $ pinned near the right side of the menu bar. If macOS moves it after a display change, reopening Orvella restores the placement.</source>
        <translation>Orvella hält $ nahe der rechten Seite der Leiste. Verschiebt das System es nach einem Bildschirmwechsel, stellt erneutes Öffnen von Orvella den Platz wieder her.</translation>
    </message>
    <message>
        <source>Auto open ads when available</source>
        <translation>Verfügbare Anzeigen automatisch öffnen</translation>
    </message>
    <message>
        <source>When enabled, Orvella opens the ad popup automatically when a qualified ad is available. When disabled, the menu bar icon turns green and waits for your click.</source>
        <translation>Wenn eingeschaltet, öffnet Orvella das Anzeigenfenster automatisch, sobald eine passende Anzeige verfügbar ist. Wenn ausgeschaltet, wird das Symbol in der Leiste grün und wartet auf Ihren Klick.</translation>
    </message>
    <message>
        <source>Ad delivery</source>
        <translation>Auslieferung von Anzeigen</translation>
    </message>
    <message>
        <source>Manual mode still works: the $ icon changes when an ad is ready.</source>
        <translation>Manuell geht es weiterhin: Das Symbol $ ändert sich, sobald eine Anzeige bereit ist.</translation>
    </message>
    <message>
        <source>Anonymous mode</source>
        <translation>Anonymer Modus</translation>
    </message>
    <message>
        <source>Anonymous mode sends no app-category signals. You can still see ads, but matching is less personalized.</source>
        <translation>Im anonymen Modus werden keine Signale zu App-Kategorien gesendet. Sie sehen weiterhin Anzeigen, die Zuordnung ist aber weniger persönlich.</translation>
    </message>
    <message>
        <source>Use app category signals</source>
        <translation>Signale zu App-Kategorien verwenden</translation>
    </message>
    <message>
        <source>I am 18 or older</source>
        <translation>Ich bin mindestens 18 Jahre alt</translation>
    </message>
    <message>
        <source>Ads and earnings are only available for viewers who confirm they are at least 18.</source>
        <translation>Anzeigen und Verdienst gibt es nur für Personen, die bestätigen, dass sie mindestens 18 Jahre alt sind.</translation>
    </message>
    <message>
        <source>Privacy</source>
        <translation>Datenschutz</translation>
    </message>
    <message>
        <source>Show this window when Orvella starts</source>
        <translation>Dieses Fenster beim Start von Orvella anzeigen</translation>
    </message>
    <message>
        <source>Controls only this startup window. Orvella still runs in the menu bar when this is off.</source>
        <translation>Betrifft nur dieses Startfenster. Ist dies ausgeschaltet, läuft Orvella weiterhin in der Leiste.</translation>
    </message>
    <message>
        <source>Turning this off only hides this startup window. Orvella will still open in the menu bar and keep checking for ads.</source>
        <translation>Ausschalten blendet nur dieses Startfenster aus. Orvella startet weiterhin in der Leiste und sucht nach Anzeigen.</translation>
    </message>
    <message>
        <source>Open dashboard</source>
        <translation>Dashboard öffnen</translation>
    </message>
    <message>
        <source>Quit Orvella</source>
        <translation>Orvella beenden</translation>
    </message>
    <message>
        <source>Got it</source>
        <translation>Verstanden</translation>
    </message>
    <message>
        <source>Anonymous mode sends no app categories.</source>
        <translation>Im anonymen Modus werden keine App-Kategorien gesendet.</translation>
    </message>
    <message>
        <source>We send broad categories like Developer tools or Design tools, never raw app names.</source>
        <translation>Wir senden allgemeine Kategorien wie „Entwicklungswerkzeuge“ oder „Designwerkzeuge“, niemals die Namen der Apps.</translation>
    </message>
</context>
<context>
    <name>orvella::MenuPopoverView</name>
    <message>
        <source>earned</source>
        <translation>verdient</translation>
    </message>
    <message>
        <source>Open ad</source>
        <translation>Anzeige öffnen</translation>
    </message>
    <message>
        <source>Auto open ads</source>
        <translation>Anzeigen automatisch öffnen</translation>
    </message>
    <message>
        <source>Automatically opens the ad popup when an ad is ready. If off, click the green $ AD icon manually.</source>
        <translation>Öffnet das Anzeigenfenster automatisch, sobald eine Anzeige bereit ist. Ist dies ausgeschaltet, klicken Sie selbst auf das grüne Symbol $ AD.</translation>
    </message>
    <message>
        <source>Anonymous mode</source>
        <translation>Anonymer Modus</translation>
    </message>
    <message>
        <source>Sends no app-category signals. You can still earn, but ads are matched with less context.</source>
        <translation>Sendet keine Signale zu App-Kategorien. Sie können weiterhin verdienen, aber Anzeigen werden mit weniger Kontext zugeordnet.</translation>
    </message>
    <message>
        <source>App category signals</source>
        <translation>Signale zu App-Kategorien</translation>
    </message>
    <message>
        <source>I am 18 or older</source>
        <translation>Ich bin mindestens 18 Jahre alt</translation>
    </message>
    <message>
        <source>Required before category signals and paid ad viewing are enabled.</source>
        <translation>Erforderlich, bevor Kategoriesignale und das vergütete Ansehen von Anzeigen freigeschaltet werden.</translation>
    </message>
    <message>
        <source>Advertisers never see your email, device id, raw app names, or open apps.</source>
        <translation>Werbetreibende sehen niemals Ihre E-Mail-Adresse, Ihre Gerätekennung, die Namen Ihrer Apps oder geöffnete Apps.</translation>
    </message>
    <message>
        <source>Open at login</source>
        <translation>Beim Anmelden öffnen</translation>
    </message>
    <message>
        <source>Starts Orvella automatically when you log in to your Mac.</source>
        <translation>Startet Orvella automatisch, wenn Sie sich anmelden.</translation>
    </message>
    <message>
        <source>Show startup window</source>
        <translation>Startfenster anzeigen</translation>
    </message>
    <message>
        <source>Controls the larger intro/settings window. Orvella still runs in the menu bar when this is off.</source>
        <translation>Betrifft das größere Fenster mit Einführung und Einstellungen. Ist dies ausgeschaltet, läuft Orvella weiterhin in der Leiste.</translation>
    </message>
    <message>
        <source>Check for Updates...</source>
        <translation>Nach Aktualisierungen suchen …</translation>
    </message>
    <message>
        <source>Checks Sparkle for the latest Orvella Mac update.</source>
        <translation>Sucht nach der neuesten Aktualisierung von Orvella.</translation>
    </message>
    <message>
        <source>Link this Mac</source>
        <translation>Diesen Computer verknüpfen</translation>
    </message>
    <message>
        <source>Linked</source>
        <translation>Verknüpft</translation>
    </message>
    <message>
        <source>Link pending</source>
        <translation>Verknüpfung ausstehend</translation>
    </message>
    <message>
        <source>Anonymous mode sends no app categories.</source>
        <translation>Im anonymen Modus werden keine App-Kategorien gesendet.</translation>
    </message>
    <message>
        <source>Category signals send broad labels only.</source>
        <translation>Kategoriesignale senden nur allgemeine Bezeichnungen.</translation>
    </message>
</context>
<context>
    <name>orvella::StatusBarController</name>
    <message>
        <source>Orvella · ad ready</source>
        <translation>Orvella · Anzeige bereit</translation>
    </message>
    <message>
        <source>Orvella · %1 available</source>
        <translation>Orvella · %1 verfügbar</translation>
    </message>
</context>
<context>
    <name>orvella::StatusMenu</name>
    <message>
        <source>Open ad</source>
        <translation>Anzeige öffnen</translation>
    </message>
    <message>
        <source>Balances and settings</source>
        <translation>Guthaben und Einstellungen</translation>
    </message>
    <message>
        <source>About Orvella</source>
        <translation>Über Orvella</translation>
    </message>
    <message>
        <source>Quit Orvella</source>
        <translation>Orvella beenden</translation>
    </message>
</context>
<context>
    <name>orvella::UpdateWindow</name>
    <message>
        <source>Progress</source>
        <translation>Fortschritt</translation>
    </message>
    <message>
        <source>Install</source>
        <translation>Installieren</translation>
    </message>
    <message>
        <source>Install version %1</source>
        <translation>Version %1 installieren</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Schließen</translation>
    </message>
</context>
</TS>
