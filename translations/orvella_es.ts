<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="es" sourcelanguage="en">
<context>
    <name>AtomicFile</name>
    <message>
        <source>A file could not be written: %1.</source>
        <translation>No se pudo escribir un archivo: %1.</translation>
    </message>
</context>
<context>
    <name>AutostartLoginItem</name>
    <message>
        <source>The entry for starting at login could not be removed: %1.</source>
        <translation>No se pudo eliminar la entrada de inicio automático: %1.</translation>
    </message>
</context>
<context>
    <name>CommandLine</name>
    <message>
        <source>Unexpected argument &apos;%1&apos;.</source>
        <translation>Argumento inesperado «%1».</translation>
    </message>
    <message>
        <source>The folder of the profile has no name.</source>
        <translation>La carpeta del perfil no tiene nombre.</translation>
    </message>
    <message>
        <source>Only one of these options can be used: %1.</source>
        <translation>Solo se puede usar una de estas opciones: %1.</translation>
    </message>
</context>
<context>
    <name>CurlTransport</name>
    <message>
        <source>The server&apos;s certificate belongs to another server.</source>
        <translation>El certificado del servidor pertenece a otro servidor.</translation>
    </message>
    <message>
        <source>The server&apos;s certificate is not valid yet.</source>
        <translation>El certificado del servidor todavía no es válido.</translation>
    </message>
    <message>
        <source>The server&apos;s certificate has expired.</source>
        <translation>El certificado del servidor ha caducado.</translation>
    </message>
    <message>
        <source>The server&apos;s certificate is not trusted.</source>
        <translation>El certificado del servidor no es de confianza.</translation>
    </message>
    <message>
        <source>The server could not be found.</source>
        <translation>No se encontró el servidor.</translation>
    </message>
    <message>
        <source>The proxy could not be found.</source>
        <translation>No se encontró el proxy.</translation>
    </message>
    <message>
        <source>The proxy did not connect to the server.</source>
        <translation>El proxy no se conectó al servidor.</translation>
    </message>
    <message>
        <source>The server could not be reached.</source>
        <translation>No se pudo contactar con el servidor.</translation>
    </message>
    <message>
        <source>The connection to the server was lost.</source>
        <translation>Se perdió la conexión con el servidor.</translation>
    </message>
    <message>
        <source>No secure connection to the server could be made.</source>
        <translation>No se pudo establecer una conexión segura con el servidor.</translation>
    </message>
    <message>
        <source>The computer&apos;s list of trusted certificates could not be read.</source>
        <translation>No se pudo leer la lista de certificados de confianza del equipo.</translation>
    </message>
    <message>
        <source>The request timed out.</source>
        <translation>Se agotó el tiempo de espera de la solicitud.</translation>
    </message>
    <message>
        <source>The server&apos;s answer could not be understood.</source>
        <translation>No se pudo entender la respuesta del servidor.</translation>
    </message>
    <message>
        <source>The server&apos;s answer was too large.</source>
        <translation>La respuesta del servidor era demasiado grande.</translation>
    </message>
    <message>
        <source>The server&apos;s address is not valid.</source>
        <translation>La dirección del servidor no es válida.</translation>
    </message>
    <message>
        <source>The request to the server did not succeed.</source>
        <translation>La solicitud al servidor no se completó.</translation>
    </message>
    <message>
        <source>The request could not be written.</source>
        <translation>No se pudo escribir la solicitud.</translation>
    </message>
</context>
<context>
    <name>Json</name>
    <message>
        <source>The text is not valid JSON.</source>
        <translation>El texto no es JSON válido.</translation>
    </message>
    <message>
        <source>The text could not be written as JSON.</source>
        <translation>No se pudo escribir el texto como JSON.</translation>
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
        <translation>Depósito de claves predeterminado</translation>
    </message>
</context>
<context>
    <name>OverlaySettings</name>
    <message>
        <source>&quot;%1&quot; is not of the form KEY=VALUE.</source>
        <translation>«%1» no tiene la forma KEY=VALUE.</translation>
    </message>
</context>
<context>
    <name>PluginUpdater</name>
    <message>
        <source>The part of Orvella that looks for updates does not fit this version. Look for updates in your software centre.</source>
        <translation>La parte de Orvella que busca actualizaciones no corresponde a esta versión. Busca actualizaciones en tu centro de software.</translation>
    </message>
    <message>
        <source>Orvella was updated while it was running. Quit it and start it again before you look for updates.</source>
        <translation>Orvella se actualizó mientras se ejecutaba. Sal de la aplicación y vuelve a iniciarla antes de buscar actualizaciones.</translation>
    </message>
    <message>
        <source>This Orvella is a Flatpak, and Flatpak brings its updates. Look for them in your software centre.</source>
        <translation>Este Orvella es un Flatpak, y Flatpak trae sus actualizaciones. Búscalas en tu centro de software.</translation>
    </message>
    <message>
        <source>This Orvella is an AppImage, which is a single file. A newer version is a newer file: get it where you got this one.</source>
        <translation>Este Orvella es un AppImage, es decir, un único archivo. Una versión más reciente es un archivo más reciente: consíguelo donde conseguiste este.</translation>
    </message>
    <message>
        <source>If Orvella came with the packages of your system, it is updated together with them: look for updates in your software centre. Otherwise get a newer version where you got this one.</source>
        <translation>Si Orvella vino con los paquetes del sistema, se actualiza junto con ellos: busca actualizaciones en tu centro de software. Si no, consigue una versión más reciente donde conseguiste esta.</translation>
    </message>
</context>
<context>
    <name>PortalLoginItem</name>
    <message>
        <source>The desktop does not let Orvella start at login.</source>
        <translation>El escritorio no permite que Orvella se abra al iniciar sesión.</translation>
    </message>
    <message>
        <source>The desktop cannot change whether Orvella starts at login.</source>
        <translation>El escritorio no puede cambiar si Orvella se abre al iniciar sesión.</translation>
    </message>
    <message>
        <source>Orvella waits in the desktop&apos;s bar until there is an ad.</source>
        <translation>Orvella espera en la barra del escritorio hasta que haya un anuncio.</translation>
    </message>
</context>
<context>
    <name>Record</name>
    <message>
        <source>is not true or false</source>
        <translation>no es verdadero ni falso</translation>
    </message>
    <message>
        <source>is not an integer</source>
        <translation>no es un número entero</translation>
    </message>
    <message>
        <source>is not a number</source>
        <translation>no es un número</translation>
    </message>
    <message>
        <source>is not a text</source>
        <translation>no es un texto</translation>
    </message>
    <message>
        <source>is not a list</source>
        <translation>no es una lista</translation>
    </message>
    <message>
        <source>is missing</source>
        <translation>falta</translation>
    </message>
    <message>
        <source>is not an object</source>
        <translation>no es un objeto</translation>
    </message>
    <message>
        <source>is not JSON</source>
        <translation>no es JSON</translation>
    </message>
    <message>
        <source>The service&apos;s answer could not be read: it %1.</source>
        <translation>No se pudo leer la respuesta del servicio: %1.</translation>
    </message>
    <message>
        <source>The service&apos;s answer could not be read: %1 %2.</source>
        <translation>No se pudo leer la respuesta del servicio: %1 %2.</translation>
    </message>
</context>
<context>
    <name>ServiceCall</name>
    <message>
        <source>The service could not answer the request.</source>
        <translation>El servicio no pudo responder a la solicitud.</translation>
    </message>
    <message>
        <source>The network answers in place of the service. You may have to sign in to it first.</source>
        <translation>La red responde en lugar del servicio. Es posible que antes tengas que iniciar sesión en ella.</translation>
    </message>
</context>
<context>
    <name>UpdateTexts</name>
    <message>
        <source>Preparing the installation…</source>
        <translation>Preparando la instalación…</translation>
    </message>
    <message>
        <source>Waiting until your system is done with other installations…</source>
        <translation>Esperando a que el sistema termine otras instalaciones…</translation>
    </message>
    <message>
        <source>Waiting for your permission…</source>
        <translation>Esperando tu permiso…</translation>
    </message>
    <message>
        <source>Downloading…</source>
        <translation>Descargando…</translation>
    </message>
    <message>
        <source>Installing…</source>
        <translation>Instalando…</translation>
    </message>
    <message>
        <source>It was cancelled.</source>
        <translation>Se canceló.</translation>
    </message>
    <message>
        <source>PackageKit, which installs updates, is not there. Look for updates in your software centre.</source>
        <translation>Falta PackageKit, que instala las actualizaciones. Busca actualizaciones en tu centro de software.</translation>
    </message>
    <message>
        <source>Your system did not allow it.</source>
        <translation>El sistema no lo permitió.</translation>
    </message>
    <message>
        <source>There is no network.</source>
        <translation>No hay conexión de red.</translation>
    </message>
    <message>
        <source>Another program is installing software. Try again when it is done.</source>
        <translation>Otro programa está instalando software. Vuelve a intentarlo cuando termine.</translation>
    </message>
    <message>
        <source>The update is not signed by a source that your system trusts.</source>
        <translation>La actualización no está firmada por un origen en el que confíe el sistema.</translation>
    </message>
    <message>
        <source>The update would remove other programs. Your software centre shows which ones.</source>
        <translation>La actualización eliminaría otros programas. Tu centro de software muestra cuáles.</translation>
    </message>
    <message>
        <source>This Orvella did not come with the packages of your system, so they do not bring its updates.</source>
        <translation>Este Orvella no procede de los paquetes del sistema, así que estos no traen sus actualizaciones.</translation>
    </message>
    <message>
        <source>Your system&apos;s package service does not answer.</source>
        <translation>El servicio de paquetes del sistema no responde.</translation>
    </message>
    <message>
        <source>Your system&apos;s package service ended before it was done.</source>
        <translation>El servicio de paquetes del sistema terminó antes de acabar.</translation>
    </message>
    <message>
        <source>Your system&apos;s package service reports an error.</source>
        <translation>El servicio de paquetes del sistema informa de un error.</translation>
    </message>
    <message>
        <source>Your system&apos;s package service reports: %1</source>
        <translation>El servicio de paquetes del sistema informa: %1</translation>
    </message>
    <message>
        <source>Looking for a newer version…</source>
        <translation>Buscando una versión más reciente…</translation>
    </message>
    <message>
        <source>Orvella is up to date.</source>
        <translation>Orvella está actualizado.</translation>
    </message>
    <message>
        <source>Version %1 is available.</source>
        <translation>La versión %1 está disponible.</translation>
    </message>
    <message>
        <source>Installing version %1…</source>
        <translation>Instalando la versión %1…</translation>
    </message>
    <message>
        <source>Version %1 is installed.</source>
        <translation>La versión %1 está instalada.</translation>
    </message>
    <message>
        <source>Orvella could not look for updates.</source>
        <translation>Orvella no pudo buscar actualizaciones.</translation>
    </message>
    <message>
        <source>Version %1 could not be installed.</source>
        <translation>No se pudo instalar la versión %1.</translation>
    </message>
    <message>
        <source>You have version %1.</source>
        <translation>Tienes la versión %1.</translation>
    </message>
    <message>
        <source>You have version %1. The list of packages could not be renewed, so there may be a newer one.</source>
        <translation>Tienes la versión %1. No se pudo renovar la lista de paquetes, así que puede haber una más reciente.</translation>
    </message>
    <message>
        <source>Your system is set to keep version %1.</source>
        <translation>El sistema está configurado para conservar la versión %1.</translation>
    </message>
    <message>
        <source>It takes effect when Orvella is started again.</source>
        <translation>Se usará cuando Orvella se inicie de nuevo.</translation>
    </message>
</context>
<context>
    <name>orvella::AdDisclosure</name>
    <message>
        <source>Broad delivery matched your language. No app category was used.</source>
        <translation>Difusión amplia, según tu idioma. No se usó ninguna categoría de aplicaciones.</translation>
    </message>
    <message>
        <source>Matched using consented broad categories: %1. Raw app names were not sent.</source>
        <translation>Elegido según categorías generales que autorizaste: %1. Los nombres de las aplicaciones no se enviaron.</translation>
    </message>
    <message>
        <source>Paid ad by %1</source>
        <translation>Anuncio pagado por %1</translation>
    </message>
    <message>
        <source>Change category matching from the Orvella menu. Anonymous mode disables category targeting.</source>
        <translation>La selección por categorías se cambia en el menú de Orvella. El modo anónimo desactiva la segmentación por categorías.</translation>
    </message>
</context>
<context>
    <name>orvella::AdWindowController</name>
    <message>
        <source>Ad</source>
        <translation>Anuncio</translation>
    </message>
    <message>
        <source>Ad information</source>
        <translation>Información del anuncio</translation>
    </message>
</context>
<context>
    <name>orvella::AdWindowView</name>
    <message>
        <source>Paid</source>
        <translation>Abonado</translation>
    </message>
    <message>
        <source>Open ad: %1</source>
        <translation>Abrir el anuncio: %1</translation>
    </message>
    <message>
        <source>Why you are seeing this ad</source>
        <translation>Por qué ves este anuncio</translation>
    </message>
    <message>
        <source>Ad information</source>
        <translation>Información del anuncio</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Cerrar</translation>
    </message>
    <message>
        <source>Dismiss without earning</source>
        <translation>Cerrar sin ganar nada</translation>
    </message>
    <message>
        <source>Close ad</source>
        <translation>Cerrar el anuncio</translation>
    </message>
    <message>
        <source>Dismiss ad without earning</source>
        <translation>Cerrar el anuncio sin ganar nada</translation>
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
        <translation>Pendiente</translation>
    </message>
    <message>
        <source>Lifetime</source>
        <translation>Total acumulado</translation>
    </message>
    <message>
        <source>Paid out</source>
        <translation>Pagado</translation>
    </message>
    <message>
        <source>Last ad</source>
        <translation>Último anuncio</translation>
    </message>
</context>
<context>
    <name>orvella::CountdownGauge</name>
    <message>
        <source>Ad time remaining</source>
        <translation>Tiempo restante del anuncio</translation>
    </message>
    <message>
        <source>%1 seconds</source>
        <translation>%1 segundos</translation>
    </message>
</context>
<context>
    <name>orvella::LaunchWindowView</name>
    <message>
        <source>Orvella is running</source>
        <translation>Orvella está en marcha</translation>
    </message>
    <message>
        <source>The app lives in your Mac menu bar and opens at login.</source>
        <translation>La aplicación vive en la barra del escritorio y se abre al iniciar sesión.</translation>
    </message>
    <message>
        <source>Look for $ in the top bar.</source>
        <translation>Busca $ en la barra.</translation>
    </message>
    <message>
        <source>When it changes to green $ AD, an ad is available.</source>
        <translation>Cuando cambia a $ AD en verde, hay un anuncio disponible.</translation>
    </message>
    <message>
        <source>Click $ to open the ad. Auto open still works even if macOS hides it.</source>
        <translation>Un clic en $ abre el anuncio. La apertura automática funciona también sin $.</translation>
    </message>
    <message>
        <source>Orvella keeps $ pinned near the right side of the menu bar. If macOS moves it after a display change, reopening Orvella restores the placement.</source>
        <translation>Orvella mantiene $ cerca del lado derecho de la barra. Si el sistema lo mueve tras un cambio de pantalla, basta con volver a abrir Orvella para devolverlo a su sitio.</translation>
    </message>
    <message>
        <source>Auto open ads when available</source>
        <translation>Abrir automáticamente los anuncios disponibles</translation>
    </message>
    <message>
        <source>When enabled, Orvella opens the ad popup automatically when a qualified ad is available. When disabled, the menu bar icon turns green and waits for your click.</source>
        <translation>Si está activado, Orvella abre la ventana del anuncio automáticamente cuando hay un anuncio apto disponible. Si está desactivado, el icono de la barra se pone verde y espera tu clic.</translation>
    </message>
    <message>
        <source>Ad delivery</source>
        <translation>Entrega de anuncios</translation>
    </message>
    <message>
        <source>Manual mode still works: the $ icon changes when an ad is ready.</source>
        <translation>El modo manual sigue funcionando: el icono $ cambia cuando hay un anuncio listo.</translation>
    </message>
    <message>
        <source>Anonymous mode</source>
        <translation>Modo anónimo</translation>
    </message>
    <message>
        <source>Anonymous mode sends no app-category signals. You can still see ads, but matching is less personalized.</source>
        <translation>El modo anónimo no envía señales de categorías de aplicaciones. Sigues viendo anuncios, pero su selección es menos personalizada.</translation>
    </message>
    <message>
        <source>Use app category signals</source>
        <translation>Usar señales de categorías de aplicaciones</translation>
    </message>
    <message>
        <source>I am 18 or older</source>
        <translation>Tengo 18 años o más</translation>
    </message>
    <message>
        <source>Ads and earnings are only available for viewers who confirm they are at least 18.</source>
        <translation>Los anuncios y las ganancias solo están disponibles para quienes confirman que tienen al menos 18 años.</translation>
    </message>
    <message>
        <source>Privacy</source>
        <translation>Privacidad</translation>
    </message>
    <message>
        <source>Show this window when Orvella starts</source>
        <translation>Mostrar esta ventana al iniciar Orvella</translation>
    </message>
    <message>
        <source>Controls only this startup window. Orvella still runs in the menu bar when this is off.</source>
        <translation>Solo afecta a esta ventana de inicio. Aunque esté desactivado, Orvella sigue funcionando en la barra.</translation>
    </message>
    <message>
        <source>Turning this off only hides this startup window. Orvella will still open in the menu bar and keep checking for ads.</source>
        <translation>Desactivarlo solo oculta esta ventana de inicio. Orvella se seguirá abriendo en la barra y buscando anuncios.</translation>
    </message>
    <message>
        <source>Open dashboard</source>
        <translation>Abrir el panel</translation>
    </message>
    <message>
        <source>Quit Orvella</source>
        <translation>Salir de Orvella</translation>
    </message>
    <message>
        <source>Got it</source>
        <translation>Entendido</translation>
    </message>
    <message>
        <source>Anonymous mode sends no app categories.</source>
        <translation>El modo anónimo no envía categorías de aplicaciones.</translation>
    </message>
    <message>
        <source>We send broad categories like Developer tools or Design tools, never raw app names.</source>
        <translation>Enviamos categorías generales como «Herramientas de desarrollo» o «Herramientas de diseño», nunca los nombres de las aplicaciones.</translation>
    </message>
</context>
<context>
    <name>orvella::MenuPopoverView</name>
    <message>
        <source>earned</source>
        <translation>ganados</translation>
    </message>
    <message>
        <source>Open ad</source>
        <translation>Abrir el anuncio</translation>
    </message>
    <message>
        <source>Auto open ads</source>
        <translation>Abrir anuncios automáticamente</translation>
    </message>
    <message>
        <source>Automatically opens the ad popup when an ad is ready. If off, click the green $ AD icon manually.</source>
        <translation>Abre la ventana del anuncio automáticamente cuando hay un anuncio listo. Si está desactivado, haz clic en el icono verde $ AD.</translation>
    </message>
    <message>
        <source>Anonymous mode</source>
        <translation>Modo anónimo</translation>
    </message>
    <message>
        <source>Sends no app-category signals. You can still earn, but ads are matched with less context.</source>
        <translation>No envía señales de categorías de aplicaciones. Puedes seguir ganando, pero los anuncios se eligen con menos contexto.</translation>
    </message>
    <message>
        <source>App category signals</source>
        <translation>Señales de categorías de aplicaciones</translation>
    </message>
    <message>
        <source>I am 18 or older</source>
        <translation>Tengo 18 años o más</translation>
    </message>
    <message>
        <source>Required before category signals and paid ad viewing are enabled.</source>
        <translation>Necesario para activar las señales de categorías y el visionado remunerado de anuncios.</translation>
    </message>
    <message>
        <source>Advertisers never see your email, device id, raw app names, or open apps.</source>
        <translation>Los anunciantes nunca ven tu correo electrónico, el identificador de tu dispositivo, los nombres de tus aplicaciones ni las aplicaciones abiertas.</translation>
    </message>
    <message>
        <source>Open at login</source>
        <translation>Abrir al iniciar sesión</translation>
    </message>
    <message>
        <source>Starts Orvella automatically when you log in to your Mac.</source>
        <translation>Inicia Orvella automáticamente cuando inicias sesión.</translation>
    </message>
    <message>
        <source>Show startup window</source>
        <translation>Mostrar la ventana de inicio</translation>
    </message>
    <message>
        <source>Controls the larger intro/settings window. Orvella still runs in the menu bar when this is off.</source>
        <translation>Afecta a la ventana grande de introducción y ajustes. Aunque esté desactivado, Orvella sigue funcionando en la barra.</translation>
    </message>
    <message>
        <source>Check for Updates...</source>
        <translation>Buscar actualizaciones…</translation>
    </message>
    <message>
        <source>Checks Sparkle for the latest Orvella Mac update.</source>
        <translation>Busca la última actualización de Orvella.</translation>
    </message>
    <message>
        <source>Link this Mac</source>
        <translation>Vincular este equipo</translation>
    </message>
    <message>
        <source>Linked</source>
        <translation>Vinculado</translation>
    </message>
    <message>
        <source>Link pending</source>
        <translation>Vinculación pendiente</translation>
    </message>
    <message>
        <source>Anonymous mode sends no app categories.</source>
        <translation>El modo anónimo no envía categorías de aplicaciones.</translation>
    </message>
    <message>
        <source>Category signals send broad labels only.</source>
        <translation>Las señales de categorías solo envían etiquetas generales.</translation>
    </message>
</context>
<context>
    <name>orvella::StatusBarController</name>
    <message>
        <source>Orvella · ad ready</source>
        <translation>Orvella · anuncio listo</translation>
    </message>
    <message>
        <source>Orvella · %1 available</source>
        <translation>Orvella · %1 disponible</translation>
    </message>
</context>
<context>
    <name>orvella::StatusMenu</name>
    <message>
        <source>Open ad</source>
        <translation>Abrir el anuncio</translation>
    </message>
    <message>
        <source>Balances and settings</source>
        <translation>Saldos y ajustes</translation>
    </message>
    <message>
        <source>About Orvella</source>
        <translation>Acerca de Orvella</translation>
    </message>
    <message>
        <source>Quit Orvella</source>
        <translation>Salir de Orvella</translation>
    </message>
</context>
<context>
    <name>orvella::UpdateWindow</name>
    <message>
        <source>Progress</source>
        <translation>Progreso</translation>
    </message>
    <message>
        <source>Install</source>
        <translation>Instalar</translation>
    </message>
    <message>
        <source>Install version %1</source>
        <translation>Instalar la versión %1</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Cancelar</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Cerrar</translation>
    </message>
</context>
</TS>
