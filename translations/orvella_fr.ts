<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="fr" sourcelanguage="en">
<context>
    <name>AtomicFile</name>
    <message>
        <source>A file could not be written: %1.</source>
        <translation>Un fichier n’a pas pu être écrit&#xa0;: %1.</translation>
    </message>
</context>
<context>
    <name>AutostartLoginItem</name>
    <message>
        <source>The entry for starting at login could not be removed: %1.</source>
        <translation>L’entrée de démarrage à l’ouverture de session n’a pas pu être supprimée&#xa0;: %1.</translation>
    </message>
</context>
<context>
    <name>CommandLine</name>
    <message>
        <source>Unexpected argument &apos;%1&apos;.</source>
        <translation>Argument inattendu «&#xa0;%1&#xa0;».</translation>
    </message>
    <message>
        <source>The folder of the profile has no name.</source>
        <translation>Le dossier du profil n’a pas de nom.</translation>
    </message>
    <message>
        <source>Only one of these options can be used: %1.</source>
        <translation>Une seule de ces options peut être utilisée&#xa0;: %1.</translation>
    </message>
</context>
<context>
    <name>CurlTransport</name>
    <message>
        <source>The server&apos;s certificate belongs to another server.</source>
        <translation>Le certificat du serveur appartient à un autre serveur.</translation>
    </message>
    <message>
        <source>The server&apos;s certificate is not valid yet.</source>
        <translation>Le certificat du serveur n’est pas encore valide.</translation>
    </message>
    <message>
        <source>The server&apos;s certificate has expired.</source>
        <translation>Le certificat du serveur a expiré.</translation>
    </message>
    <message>
        <source>The server&apos;s certificate is not trusted.</source>
        <translation>Le certificat du serveur n’est pas digne de confiance.</translation>
    </message>
    <message>
        <source>The server could not be found.</source>
        <translation>Le serveur est introuvable.</translation>
    </message>
    <message>
        <source>The proxy could not be found.</source>
        <translation>Le serveur mandataire est introuvable.</translation>
    </message>
    <message>
        <source>The proxy did not connect to the server.</source>
        <translation>Le serveur mandataire ne s’est pas connecté au serveur.</translation>
    </message>
    <message>
        <source>The server could not be reached.</source>
        <translation>Le serveur est injoignable.</translation>
    </message>
    <message>
        <source>The connection to the server was lost.</source>
        <translation>La connexion au serveur a été perdue.</translation>
    </message>
    <message>
        <source>No secure connection to the server could be made.</source>
        <translation>Aucune connexion sécurisée au serveur n’a pu être établie.</translation>
    </message>
    <message>
        <source>The computer&apos;s list of trusted certificates could not be read.</source>
        <translation>La liste des certificats de confiance de l’ordinateur n’a pas pu être lue.</translation>
    </message>
    <message>
        <source>The request timed out.</source>
        <translation>Le délai de la requête a expiré.</translation>
    </message>
    <message>
        <source>The server&apos;s answer could not be understood.</source>
        <translation>La réponse du serveur n’a pas pu être comprise.</translation>
    </message>
    <message>
        <source>The server&apos;s answer was too large.</source>
        <translation>La réponse du serveur est trop volumineuse.</translation>
    </message>
    <message>
        <source>The server&apos;s address is not valid.</source>
        <translation>L’adresse du serveur n’est pas valide.</translation>
    </message>
    <message>
        <source>The request to the server did not succeed.</source>
        <translation>La requête au serveur a échoué.</translation>
    </message>
    <message>
        <source>The request could not be written.</source>
        <translation>La requête n’a pas pu être écrite.</translation>
    </message>
</context>
<context>
    <name>Json</name>
    <message>
        <source>The text is not valid JSON.</source>
        <translation>Le texte n’est pas du JSON valide.</translation>
    </message>
    <message>
        <source>The text could not be written as JSON.</source>
        <translation>Le texte n’a pas pu être écrit en JSON.</translation>
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
        <translation>Trousseau par défaut</translation>
    </message>
</context>
<context>
    <name>OverlaySettings</name>
    <message>
        <source>&quot;%1&quot; is not of the form KEY=VALUE.</source>
        <translation>«&#xa0;%1&#xa0;» n’est pas de la forme KEY=VALUE.</translation>
    </message>
</context>
<context>
    <name>PluginUpdater</name>
    <message>
        <source>The part of Orvella that looks for updates does not fit this version. Look for updates in your software centre.</source>
        <translation>La partie d’Orvella qui recherche les mises à jour ne correspond pas à cette version. Recherchez les mises à jour dans votre logithèque.</translation>
    </message>
    <message>
        <source>Orvella was updated while it was running. Quit it and start it again before you look for updates.</source>
        <translation>Orvella a été mis à jour pendant son exécution. Quittez-le et relancez-le avant de rechercher des mises à jour.</translation>
    </message>
    <message>
        <source>This Orvella is a Flatpak, and Flatpak brings its updates. Look for them in your software centre.</source>
        <translation>Cet Orvella est un Flatpak, et c’est Flatpak qui apporte ses mises à jour. Recherchez-les dans votre logithèque.</translation>
    </message>
    <message>
        <source>This Orvella is an AppImage, which is a single file. A newer version is a newer file: get it where you got this one.</source>
        <translation>Cet Orvella est une AppImage, c’est-à-dire un seul fichier. Une version plus récente est un fichier plus récent : procurez-vous-le là où vous avez obtenu celui-ci.</translation>
    </message>
    <message>
        <source>If Orvella came with the packages of your system, it is updated together with them: look for updates in your software centre. Otherwise get a newer version where you got this one.</source>
        <translation>Si Orvella provient des paquets de votre système, il est mis à jour avec eux : recherchez les mises à jour dans votre logithèque. Sinon, procurez-vous une version plus récente là où vous avez obtenu celle-ci.</translation>
    </message>
</context>
<context>
    <name>PortalLoginItem</name>
    <message>
        <source>The desktop does not let Orvella start at login.</source>
        <translation>Le bureau ne permet pas à Orvella de se lancer avec la session.</translation>
    </message>
    <message>
        <source>The desktop cannot change whether Orvella starts at login.</source>
        <translation>Le bureau ne peut pas changer si Orvella se lance avec la session.</translation>
    </message>
    <message>
        <source>Orvella waits in the desktop&apos;s bar until there is an ad.</source>
        <translation>Orvella attend dans la barre du bureau jusqu’à ce qu’il y ait une publicité.</translation>
    </message>
</context>
<context>
    <name>Record</name>
    <message>
        <source>is not true or false</source>
        <translation>n’est ni vrai ni faux</translation>
    </message>
    <message>
        <source>is not an integer</source>
        <translation>n’est pas un nombre entier</translation>
    </message>
    <message>
        <source>is not a number</source>
        <translation>n’est pas un nombre</translation>
    </message>
    <message>
        <source>is not a text</source>
        <translation>n’est pas un texte</translation>
    </message>
    <message>
        <source>is not a list</source>
        <translation>n’est pas une liste</translation>
    </message>
    <message>
        <source>is missing</source>
        <translation>est absent</translation>
    </message>
    <message>
        <source>is not an object</source>
        <translation>n’est pas un objet</translation>
    </message>
    <message>
        <source>is not JSON</source>
        <translation>n’est pas du JSON</translation>
    </message>
    <message>
        <source>The service&apos;s answer could not be read: it %1.</source>
        <translation>La réponse du service n’a pas pu être lue&#xa0;: elle %1.</translation>
    </message>
    <message>
        <source>The service&apos;s answer could not be read: %1 %2.</source>
        <translation>La réponse du service n’a pas pu être lue&#xa0;: %1 %2.</translation>
    </message>
</context>
<context>
    <name>ServiceCall</name>
    <message>
        <source>The service could not answer the request.</source>
        <translation>Le service n’a pas pu répondre à la requête.</translation>
    </message>
    <message>
        <source>The network answers in place of the service. You may have to sign in to it first.</source>
        <translation>Le réseau répond à la place du service. Il faut peut-être d’abord s’y connecter.</translation>
    </message>
</context>
<context>
    <name>UpdateTexts</name>
    <message>
        <source>Preparing the installation…</source>
        <translation>Préparation de l’installation…</translation>
    </message>
    <message>
        <source>Waiting until your system is done with other installations…</source>
        <translation>En attente de la fin d’autres installations sur votre système…</translation>
    </message>
    <message>
        <source>Waiting for your permission…</source>
        <translation>En attente de votre autorisation…</translation>
    </message>
    <message>
        <source>Downloading…</source>
        <translation>Téléchargement…</translation>
    </message>
    <message>
        <source>Installing…</source>
        <translation>Installation…</translation>
    </message>
    <message>
        <source>It was cancelled.</source>
        <translation>L’opération a été annulée.</translation>
    </message>
    <message>
        <source>PackageKit, which installs updates, is not there. Look for updates in your software centre.</source>
        <translation>PackageKit, qui installe les mises à jour, est absent. Recherchez les mises à jour dans votre logithèque.</translation>
    </message>
    <message>
        <source>Your system did not allow it.</source>
        <translation>Votre système ne l’a pas autorisé.</translation>
    </message>
    <message>
        <source>There is no network.</source>
        <translation>Il n’y a pas de connexion réseau.</translation>
    </message>
    <message>
        <source>Another program is installing software. Try again when it is done.</source>
        <translation>Un autre programme installe des logiciels. Réessayez quand il aura terminé.</translation>
    </message>
    <message>
        <source>The update is not signed by a source that your system trusts.</source>
        <translation>La mise à jour n’est pas signée par une source à laquelle votre système fait confiance.</translation>
    </message>
    <message>
        <source>The update would remove other programs. Your software centre shows which ones.</source>
        <translation>La mise à jour supprimerait d’autres programmes. Votre logithèque indique lesquels.</translation>
    </message>
    <message>
        <source>This Orvella did not come with the packages of your system, so they do not bring its updates.</source>
        <translation>Cet Orvella ne provient pas des paquets de votre système, qui n’apportent donc pas ses mises à jour.</translation>
    </message>
    <message>
        <source>Your system&apos;s package service does not answer.</source>
        <translation>Le service de paquets de votre système ne répond pas.</translation>
    </message>
    <message>
        <source>Your system&apos;s package service ended before it was done.</source>
        <translation>Le service de paquets de votre système s’est arrêté avant d’avoir terminé.</translation>
    </message>
    <message>
        <source>Your system&apos;s package service reports an error.</source>
        <translation>Le service de paquets de votre système signale une erreur.</translation>
    </message>
    <message>
        <source>Your system&apos;s package service reports: %1</source>
        <translation>Le service de paquets de votre système signale : %1</translation>
    </message>
    <message>
        <source>Looking for a newer version…</source>
        <translation>Recherche d’une version plus récente…</translation>
    </message>
    <message>
        <source>Orvella is up to date.</source>
        <translation>Orvella est à jour.</translation>
    </message>
    <message>
        <source>Version %1 is available.</source>
        <translation>La version %1 est disponible.</translation>
    </message>
    <message>
        <source>Installing version %1…</source>
        <translation>Installation de la version %1…</translation>
    </message>
    <message>
        <source>Version %1 is installed.</source>
        <translation>La version %1 est installée.</translation>
    </message>
    <message>
        <source>Orvella could not look for updates.</source>
        <translation>Orvella n’a pas pu rechercher les mises à jour.</translation>
    </message>
    <message>
        <source>Version %1 could not be installed.</source>
        <translation>La version %1 n’a pas pu être installée.</translation>
    </message>
    <message>
        <source>You have version %1.</source>
        <translation>Vous avez la version %1.</translation>
    </message>
    <message>
        <source>You have version %1. The list of packages could not be renewed, so there may be a newer one.</source>
        <translation>Vous avez la version %1. La liste des paquets n’a pas pu être renouvelée ; il en existe peut-être une plus récente.</translation>
    </message>
    <message>
        <source>Your system is set to keep version %1.</source>
        <translation>Votre système est réglé pour conserver la version %1.</translation>
    </message>
    <message>
        <source>It takes effect when Orvella is started again.</source>
        <translation>Elle sera utilisée au prochain démarrage d’Orvella.</translation>
    </message>
</context>
<context>
    <name>orvella::AdDisclosure</name>
    <message>
        <source>Broad delivery matched your language. No app category was used.</source>
        <translation>Diffusion large, selon votre langue. Aucune catégorie d’applications n’a été utilisée.</translation>
    </message>
    <message>
        <source>Matched using consented broad categories: %1. Raw app names were not sent.</source>
        <translation>Choisie d’après des catégories générales auxquelles vous avez consenti&#xa0;: %1. Les noms des applications n’ont pas été envoyés.</translation>
    </message>
    <message>
        <source>Paid ad by %1</source>
        <translation>Publicité payée par %1</translation>
    </message>
    <message>
        <source>Change category matching from the Orvella menu. Anonymous mode disables category targeting.</source>
        <translation>La sélection par catégories se règle dans le menu d’Orvella. Le mode anonyme désactive le ciblage par catégories.</translation>
    </message>
</context>
<context>
    <name>orvella::AdWindowController</name>
    <message>
        <source>Ad</source>
        <translation>Publicité</translation>
    </message>
    <message>
        <source>Ad information</source>
        <translation>Informations sur la publicité</translation>
    </message>
</context>
<context>
    <name>orvella::AdWindowView</name>
    <message>
        <source>Paid</source>
        <translation>Crédité</translation>
    </message>
    <message>
        <source>Open ad: %1</source>
        <translation>Ouvrir la publicité&#xa0;: %1</translation>
    </message>
    <message>
        <source>Why you are seeing this ad</source>
        <translation>Pourquoi vous voyez cette publicité</translation>
    </message>
    <message>
        <source>Ad information</source>
        <translation>Informations sur la publicité</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Fermer</translation>
    </message>
    <message>
        <source>Dismiss without earning</source>
        <translation>Fermer sans rien gagner</translation>
    </message>
    <message>
        <source>Close ad</source>
        <translation>Fermer la publicité</translation>
    </message>
    <message>
        <source>Dismiss ad without earning</source>
        <translation>Fermer la publicité sans rien gagner</translation>
    </message>
</context>
<context>
    <name>orvella::BalancesView</name>
    <message>
        <source>Available</source>
        <translation>Disponible</translation>
    </message>
    <message>
        <source>Pending</source>
        <translation>En attente</translation>
    </message>
    <message>
        <source>Lifetime</source>
        <translation>Total cumulé</translation>
    </message>
    <message>
        <source>Paid out</source>
        <translation>Versé</translation>
    </message>
    <message>
        <source>Last ad</source>
        <translation>Dernière publicité</translation>
    </message>
</context>
<context>
    <name>orvella::CountdownGauge</name>
    <message>
        <source>Ad time remaining</source>
        <translation>Temps restant de la publicité</translation>
    </message>
    <message>
        <source>%1 seconds</source>
        <translation>%1 secondes</translation>
    </message>
</context>
<context>
    <name>orvella::LaunchWindowView</name>
    <message>
        <source>Orvella is running</source>
        <translation>Orvella est en marche</translation>
    </message>
    <message>
        <source>The app lives in your Mac menu bar and opens at login.</source>
        <translation>L’application vit dans la barre du bureau et s’ouvre avec la session.</translation>
    </message>
    <message>
        <source>Look for $ in the top bar.</source>
        <translation>Cherchez $ dans la barre.</translation>
    </message>
    <message>
        <source>When it changes to green $ AD, an ad is available.</source>
        <translation>Quand il devient $ AD en vert, une publicité est disponible.</translation>
    </message>
    <message>
        <source>Click $ to open the ad. Auto open still works even if macOS hides it.</source>
        <translation>Un clic sur $ ouvre la publicité. L’ouverture automatique marche aussi sans $.</translation>
    </message>
    <message>
        <source>Orvella keeps $ pinned near the right side of the menu bar. If macOS moves it after a display change, reopening Orvella restores the placement.</source>
        <translation>Orvella garde $ près du côté droit de la barre. Si le système le déplace après un changement d’écran, rouvrir Orvella le remet à sa place.</translation>
    </message>
    <message>
        <source>Auto open ads when available</source>
        <translation>Ouvrir automatiquement les publicités disponibles</translation>
    </message>
    <message>
        <source>When enabled, Orvella opens the ad popup automatically when a qualified ad is available. When disabled, the menu bar icon turns green and waits for your click.</source>
        <translation>Si cette option est activée, Orvella ouvre la fenêtre de publicité automatiquement dès qu’une publicité admissible est disponible. Sinon, l’icône de la barre devient verte et attend votre clic.</translation>
    </message>
    <message>
        <source>Ad delivery</source>
        <translation>Diffusion des publicités</translation>
    </message>
    <message>
        <source>Manual mode still works: the $ icon changes when an ad is ready.</source>
        <translation>Le mode manuel reste possible&#xa0;: l’icône $ change quand une publicité est prête.</translation>
    </message>
    <message>
        <source>Anonymous mode</source>
        <translation>Mode anonyme</translation>
    </message>
    <message>
        <source>Anonymous mode sends no app-category signals. You can still see ads, but matching is less personalized.</source>
        <translation>Le mode anonyme n’envoie aucun signal de catégories d’applications. Vous voyez toujours des publicités, mais leur sélection est moins personnalisée.</translation>
    </message>
    <message>
        <source>Use app category signals</source>
        <translation>Utiliser les signaux de catégories d’applications</translation>
    </message>
    <message>
        <source>I am 18 or older</source>
        <translation>J’ai 18 ans ou plus</translation>
    </message>
    <message>
        <source>Ads and earnings are only available for viewers who confirm they are at least 18.</source>
        <translation>Les publicités et les gains sont réservés aux personnes qui confirment avoir au moins 18 ans.</translation>
    </message>
    <message>
        <source>Privacy</source>
        <translation>Confidentialité</translation>
    </message>
    <message>
        <source>Show this window when Orvella starts</source>
        <translation>Afficher cette fenêtre au démarrage d’Orvella</translation>
    </message>
    <message>
        <source>Controls only this startup window. Orvella still runs in the menu bar when this is off.</source>
        <translation>Ne concerne que cette fenêtre de démarrage. Si l’option est désactivée, Orvella reste dans la barre.</translation>
    </message>
    <message>
        <source>Turning this off only hides this startup window. Orvella will still open in the menu bar and keep checking for ads.</source>
        <translation>Désactiver cette option masque seulement cette fenêtre. Orvella s’ouvre toujours dans la barre et continue à chercher des publicités.</translation>
    </message>
    <message>
        <source>Open dashboard</source>
        <translation>Ouvrir le tableau de bord</translation>
    </message>
    <message>
        <source>Quit Orvella</source>
        <translation>Quitter Orvella</translation>
    </message>
    <message>
        <source>Got it</source>
        <translation>Compris</translation>
    </message>
    <message>
        <source>Anonymous mode sends no app categories.</source>
        <translation>Le mode anonyme n’envoie aucune catégorie d’applications.</translation>
    </message>
    <message>
        <source>We send broad categories like Developer tools or Design tools, never raw app names.</source>
        <translation>Nous envoyons des catégories générales comme «&#xa0;Outils de développement&#xa0;» ou «&#xa0;Outils de création&#xa0;», jamais les noms des applications.</translation>
    </message>
</context>
<context>
    <name>orvella::MenuPopoverView</name>
    <message>
        <source>earned</source>
        <translation>gagnés</translation>
    </message>
    <message>
        <source>Open ad</source>
        <translation>Ouvrir la publicité</translation>
    </message>
    <message>
        <source>Auto open ads</source>
        <translation>Ouvrir les publicités automatiquement</translation>
    </message>
    <message>
        <source>Automatically opens the ad popup when an ad is ready. If off, click the green $ AD icon manually.</source>
        <translation>Ouvre la fenêtre de publicité automatiquement quand une publicité est prête. Sinon, cliquez vous-même sur l’icône verte $ AD.</translation>
    </message>
    <message>
        <source>Anonymous mode</source>
        <translation>Mode anonyme</translation>
    </message>
    <message>
        <source>Sends no app-category signals. You can still earn, but ads are matched with less context.</source>
        <translation>N’envoie aucun signal de catégories d’applications. Vous pouvez toujours gagner de l’argent, mais les publicités sont choisies avec moins de contexte.</translation>
    </message>
    <message>
        <source>App category signals</source>
        <translation>Signaux de catégories d’applications</translation>
    </message>
    <message>
        <source>I am 18 or older</source>
        <translation>J’ai 18 ans ou plus</translation>
    </message>
    <message>
        <source>Required before category signals and paid ad viewing are enabled.</source>
        <translation>Nécessaire pour activer les signaux de catégories et le visionnage rémunéré de publicités.</translation>
    </message>
    <message>
        <source>Advertisers never see your email, device id, raw app names, or open apps.</source>
        <translation>Les annonceurs ne voient jamais votre adresse électronique, l’identifiant de votre appareil, les noms de vos applications ni les applications ouvertes.</translation>
    </message>
    <message>
        <source>Open at login</source>
        <translation>Ouvrir avec la session</translation>
    </message>
    <message>
        <source>Starts Orvella automatically when you log in to your Mac.</source>
        <translation>Démarre Orvella automatiquement quand vous ouvrez votre session.</translation>
    </message>
    <message>
        <source>Show startup window</source>
        <translation>Afficher la fenêtre de démarrage</translation>
    </message>
    <message>
        <source>Controls the larger intro/settings window. Orvella still runs in the menu bar when this is off.</source>
        <translation>Concerne la grande fenêtre de présentation et de réglages. Si l’option est désactivée, Orvella reste dans la barre.</translation>
    </message>
    <message>
        <source>Check for Updates...</source>
        <translation>Rechercher des mises à jour…</translation>
    </message>
    <message>
        <source>Checks Sparkle for the latest Orvella Mac update.</source>
        <translation>Recherche la dernière mise à jour d’Orvella.</translation>
    </message>
    <message>
        <source>Link this Mac</source>
        <translation>Associer cet ordinateur</translation>
    </message>
    <message>
        <source>Linked</source>
        <translation>Associé</translation>
    </message>
    <message>
        <source>Link pending</source>
        <translation>Association en attente</translation>
    </message>
    <message>
        <source>Anonymous mode sends no app categories.</source>
        <translation>Le mode anonyme n’envoie aucune catégorie d’applications.</translation>
    </message>
    <message>
        <source>Category signals send broad labels only.</source>
        <translation>Les signaux de catégories n’envoient que des libellés généraux.</translation>
    </message>
</context>
<context>
    <name>orvella::StatusBarController</name>
    <message>
        <source>Orvella · ad ready</source>
        <translation>Orvella · publicité prête</translation>
    </message>
    <message>
        <source>Orvella · %1 available</source>
        <translation>Orvella · %1 disponibles</translation>
    </message>
</context>
<context>
    <name>orvella::StatusMenu</name>
    <message>
        <source>Open ad</source>
        <translation>Ouvrir la publicité</translation>
    </message>
    <message>
        <source>Balances and settings</source>
        <translation>Soldes et réglages</translation>
    </message>
    <message>
        <source>About Orvella</source>
        <translation>À propos d’Orvella</translation>
    </message>
    <message>
        <source>Quit Orvella</source>
        <translation>Quitter Orvella</translation>
    </message>
</context>
<context>
    <name>orvella::UpdateWindow</name>
    <message>
        <source>Progress</source>
        <translation>Progression</translation>
    </message>
    <message>
        <source>Install</source>
        <translation>Installer</translation>
    </message>
    <message>
        <source>Install version %1</source>
        <translation>Installer la version %1</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Annuler</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Fermer</translation>
    </message>
</context>
</TS>
