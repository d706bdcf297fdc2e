<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="pt_BR" sourcelanguage="en">
<context>
    <name>AtomicFile</name>
    <message>
        <source>A file could not be written: %1.</source>
        <translation>Não foi possível gravar um arquivo: %1.</translation>
    </message>
</context>
<context>
    <name>AutostartLoginItem</name>
    <message>
        <source>The entry for starting at login could not be removed: %1.</source>
        <translation>Não foi possível remover a entrada de início automático: %1.</translation>
    </message>
</context>
<context>
    <name>CommandLine</name>
    <message>
        <source>Unexpected argument &apos;%1&apos;.</source>
        <translation>Argumento inesperado “%1”.</translation>
    </message>
    <message>
        <source>The folder of the profile has no name.</source>
        <translation>A pasta do perfil não tem nome.</translation>
    </message>
    <message>
        <source>Only one of these options can be used: %1.</source>
        <translation>Só é possível usar uma destas opções: %1.</translation>
    </message>
</context>
<context>
    <name>CurlTransport</name>
    <message>
        <source>The server&apos;s certificate belongs to another server.</source>
        <translation>O certificado do servidor pertence a outro servidor.</translation>
    </message>
    <message>
        <source>The server&apos;s certificate is not valid yet.</source>
        <translation>O certificado do servidor ainda não é válido.</translation>
    </message>
    <message>
        <source>The server&apos;s certificate has expired.</source>
        <translation>O certificado do servidor expirou.</translation>
    </message>
    <message>
        <source>The server&apos;s certificate is not trusted.</source>
        <translation>O certificado do servidor não é confiável.</translation>
    </message>
    <message>
        <source>The server could not be found.</source>
        <translation>O servidor não foi encontrado.</translation>
    </message>
    <message>
        <source>The proxy could not be found.</source>
        <translation>O proxy não foi encontrado.</translation>
    </message>
    <message>
        <source>The proxy did not connect to the server.</source>
        <translation>O proxy não se conectou ao servidor.</translation>
    </message>
    <message>
        <source>The server could not be reached.</source>
        <translation>Não foi possível acessar o servidor.</translation>
    </message>
    <message>
        <source>The connection to the server was lost.</source>
        <translation>A conexão com o servidor foi perdida.</translation>
    </message>
    <message>
        <source>No secure connection to the server could be made.</source>
        <translation>Não foi possível estabelecer uma conexão segura com o servidor.</translation>
    </message>
    <message>
        <source>The computer&apos;s list of trusted certificates could not be read.</source>
        <translation>Não foi possível ler a lista de certificados confiáveis do computador.</translation>
    </message>
    <message>
        <source>The request timed out.</source>
        <translation>O tempo da solicitação se esgotou.</translation>
    </message>
    <message>
        <source>The server&apos;s answer could not be understood.</source>
        <translation>Não foi possível entender a resposta do servidor.</translation>
    </message>
    <message>
        <source>The server&apos;s answer was too large.</source>
        <translation>A resposta do servidor era grande demais.</translation>
    </message>
    <message>
        <source>The server&apos;s address is not valid.</source>
        <translation>O endereço do servidor não é válido.</translation>
    </message>
    <message>
        <source>The request to the server did not succeed.</source>
        <translation>A solicitação ao servidor não foi concluída.</translation>
    </message>
    <message>
        <source>The request could not be written.</source>
        <translation>Não foi possível gravar a solicitação.</translation>
    </message>
</context>
<context>
    <name>Json</name>
    <message>
        <source>The text is not valid JSON.</source>
        <translation>O texto não é um JSON válido.</translation>
    </message>
    <message>
        <source>The text could not be written as JSON.</source>
        <translation>Não foi possível gravar o texto como JSON.</translation>
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
        <translation>Chaveiro padrão</translation>
    </message>
</context>
<context>
    <name>OverlaySettings</name>
    <message>
        <source>&quot;%1&quot; is not of the form KEY=VALUE.</source>
        <translation>“%1” não está na forma KEY=VALUE.</translation>
    </message>
</context>
<context>
    <name>PluginUpdater</name>
    <message>
        <source>The part of Orvella that looks for updates does not fit this version. Look for updates in your software centre.</source>
        <translation>A parte do Orvella que procura atualizações não corresponde a esta versão. Procure atualizações na sua central de aplicativos.</translation>
    </message>
    <message>
        <source>Orvella was updated while it was running. Quit it and start it again before you look for updates.</source>
        <translation>O Orvella foi atualizado enquanto estava em execução. Saia dele e inicie-o novamente antes de procurar atualizações.</translation>
    </message>
    <message>
        <source>This Orvella is a Flatpak, and Flatpak brings its updates. Look for them in your software centre.</source>
        <translation>Este Orvella é um Flatpak, e o Flatpak traz as atualizações dele. Procure-as na sua central de aplicativos.</translation>
    </message>
    <message>
        <source>This Orvella is an AppImage, which is a single file. A newer version is a newer file: get it where you got this one.</source>
        <translation>Este Orvella é um AppImage, ou seja, um único arquivo. Uma versão mais recente é um arquivo mais recente: obtenha-o onde você obteve este.</translation>
    </message>
    <message>
        <source>If Orvella came with the packages of your system, it is updated together with them: look for updates in your software centre. Otherwise get a newer version where you got this one.</source>
        <translation>Se o Orvella veio dos pacotes do sistema, ele é atualizado junto com eles: procure atualizações na sua central de aplicativos. Caso contrário, obtenha uma versão mais recente onde você obteve esta.</translation>
    </message>
</context>
<context>
    <name>PortalLoginItem</name>
    <message>
        <source>The desktop does not let Orvella start at login.</source>
        <translation>A área de trabalho não permite que o Orvella seja iniciado com a sessão.</translation>
    </message>
    <message>
        <source>The desktop cannot change whether Orvella starts at login.</source>
        <translation>A área de trabalho não consegue mudar se o Orvella é iniciado com a sessão.</translation>
    </message>
    <message>
        <source>Orvella waits in the desktop&apos;s bar until there is an ad.</source>
        <translation>O Orvella espera na barra da área de trabalho até haver um anúncio.</translation>
    </message>
</context>
<context>
    <name>Record</name>
    <message>
        <source>is not true or false</source>
        <translation>não é verdadeiro nem falso</translation>
    </message>
    <message>
        <source>is not an integer</source>
        <translation>não é um número inteiro</translation>
    </message>
    <message>
        <source>is not a number</source>
        <translation>não é um número</translation>
    </message>
    <message>
        <source>is not a text</source>
        <translation>não é um texto</translation>
    </message>
    <message>
        <source>is not a list</source>
        <translation>não é uma lista</translation>
    </message>
    <message>
        <source>is missing</source>
        <translation>está faltando</translation>
    </message>
    <message>
        <source>is not an object</source>
        <translation>não é um objeto</translation>
    </message>
    <message>
        <source>is not JSON</source>
        <translation>não é JSON</translation>
    </message>
    <message>
        <source>The service&apos;s answer could not be read: it %1.</source>
        <translation>Não foi possível ler a resposta do serviço: ela %1.</translation>
    </message>
    <message>
        <source>The service&apos;s answer could not be read: %1 %2.</source>
        <translation>Não foi possível ler a resposta do serviço: %1 %2.</translation>
    </message>
</context>
<context>
    <name>ServiceCall</name>
    <message>
        <source>The service could not answer the request.</source>
        <translation>O serviço não conseguiu responder à solicitação.</translation>
    </message>
    <message>
        <source>The network answers in place of the service. You may have to sign in to it first.</source>
        <translation>A rede responde no lugar do serviço. Talvez seja preciso entrar nela primeiro.</translation>
    </message>
</context>
<context>
    <name>UpdateTexts</name>
    <message>
        <source>Preparing the installation…</source>
        <translation>Preparando a instalação…</translation>
    </message>
    <message>
        <source>Waiting until your system is done with other installations…</source>
        <translation>Aguardando o sistema terminar outras instalações…</translation>
    </message>
    <message>
        <source>Waiting for your permission…</source>
        <translation>Aguardando sua permissão…</translation>
    </message>
    <message>
        <source>Downloading…</source>
        <translation>Baixando…</translation>
    </message>
    <message>
        <source>Installing…</source>
        <translation>Instalando…</translation>
    </message>
    <message>
        <source>It was cancelled.</source>
        <translation>A operação foi cancelada.</translation>
    </message>
    <message>
        <source>PackageKit, which installs updates, is not there. Look for updates in your software centre.</source>
        <translation>O PackageKit, que instala as atualizações, não está presente. Procure atualizações na sua central de aplicativos.</translation>
    </message>
    <message>
        <source>Your system did not allow it.</source>
        <translation>O sistema não permitiu.</translation>
    </message>
    <message>
        <source>There is no network.</source>
        <translation>Não há conexão de rede.</translation>
    </message>
    <message>
        <source>Another program is installing software. Try again when it is done.</source>
        <translation>Outro programa está instalando software. Tente novamente quando ele terminar.</translation>
    </message>
    <message>
        <source>The update is not signed by a source that your system trusts.</source>
        <translation>A atualização não está assinada por uma fonte em que o sistema confia.</translation>
    </message>
    <message>
        <source>The update would remove other programs. Your software centre shows which ones.</source>
        <translation>A atualização removeria outros programas. Sua central de aplicativos mostra quais.</translation>
    </message>
    <message>
        <source>This Orvella did not come with the packages of your system, so they do not bring its updates.</source>
        <translation>Este Orvella não veio dos pacotes do sistema, portanto eles não trazem as atualizações dele.</translation>
    </message>
    <message>
        <source>Your system&apos;s package service does not answer.</source>
        <translation>O serviço de pacotes do sistema não responde.</translation>
    </message>
    <message>
        <source>Your system&apos;s package service ended before it was done.</source>
        <translation>O serviço de pacotes do sistema parou antes de terminar.</translation>
    </message>
    <message>
        <source>Your system&apos;s package service reports an error.</source>
        <translation>O serviço de pacotes do sistema informou um erro.</translation>
    </message>
    <message>
        <source>Your system&apos;s package service reports: %1</source>
        <translation>O serviço de pacotes do sistema informou: %1</translation>
    </message>
    <message>
        <source>Looking for a newer version…</source>
        <translation>Procurando uma versão mais recente…</translation>
    </message>
    <message>
        <source>Orvella is up to date.</source>
        <translation>O Orvella está atualizado.</translation>
    </message>
    <message>
        <source>Version %1 is available.</source>
        <translation>A versão %1 está disponível.</translation>
    </message>
    <message>
        <source>Installing version %1…</source>
        <translation>Instalando a versão %1…</translation>
    </message>
    <message>
        <source>Version %1 is installed.</source>
        <translation>A versão %1 está instalada.</translation>
    </message>
    <message>
        <source>Orvella could not look for updates.</source>
        <translation>O Orvella não conseguiu procurar atualizações.</translation>
    </message>
    <message>
        <source>Version %1 could not be installed.</source>
        <translation>Não foi possível instalar a versão %1.</translation>
    </message>
    <message>
        <source>You have version %1.</source>
        <translation>Você tem a versão %1.</translation>
    </message>
    <message>
        <source>You have version %1. The list of packages could not be renewed, so there may be a newer one.</source>
        <translation>Você tem a versão %1. Não foi possível renovar a lista de pacotes; talvez haja uma mais recente.</translation>
    </message>
    <message>
        <source>Your system is set to keep version %1.</source>
        <translation>O sistema está configurado para manter a versão %1.</translation>
    </message>
    <message>
        <source>It takes effect when Orvella is started again.</source>
        <translation>Ela será usada quando o Orvella for iniciado novamente.</translation>
    </message>
</context>
<context>
    <name>orvella::AdDisclosure</name>
    <message>
        <source>Broad delivery matched your language. No app category was used.</source>
        <translation>Entrega ampla, de acordo com o seu idioma. Nenhuma categoria de aplicativos foi usada.</translation>
    </message>
    <message>
        <source>Matched using consented broad categories: %1. Raw app names were not sent.</source>
        <translation>Selecionado por categorias gerais que você autorizou: %1. Os nomes dos aplicativos não foram enviados.</translation>
    </message>
    <message>
        <source>Paid ad by %1</source>
        <translation>Anúncio pago por %1</translation>
    </message>
    <message>
        <source>Change category matching from the Orvella menu. Anonymous mode disables category targeting.</source>
        <translation>A seleção por categorias pode ser alterada no menu do Orvella. O modo anônimo desativa a segmentação por categorias.</translation>
    </message>
</context>
<context>
    <name>orvella::AdWindowController</name>
    <message>
        <source>Ad</source>
        <translation>Anúncio</translation>
    </message>
    <message>
        <source>Ad information</source>
        <translation>Informações sobre o anúncio</translation>
    </message>
</context>
<context>
    <name>orvella::AdWindowView</name>
    <message>
        <source>Paid</source>
        <translation>Creditado</translation>
    </message>
    <message>
        <source>Open ad: %1</source>
        <translation>Abrir anúncio: %1</translation>
    </message>
    <message>
        <source>Why you are seeing this ad</source>
        <translation>Por que você está vendo este anúncio</translation>
    </message>
    <message>
        <source>Ad information</source>
        <translation>Informações sobre o anúncio</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Fechar</translation>
    </message>
    <message>
        <source>Dismiss without earning</source>
        <translation>Fechar sem ganhar</translation>
    </message>
    <message>
        <source>Close ad</source>
        <translation>Fechar anúncio</translation>
    </message>
    <message>
        <source>Dismiss ad without earning</source>
        <translation>Fechar anúncio sem ganhar</translation>
    </message>
</context>
<context>
    <name>orvella::BalancesView</name>
    <message>
        <source>Available</source>
        <translation>Disponível</translation>
    </message>
    <message>
        <source>Pending</source>
        <translation>Pendente</translation>
    </message>
    <message>
        <source>Lifetime</source>
        <translation>Total acumulado</translation>
    </message>
    <message>
        <source>Paid out</source>
        <translation>Pago</translation>
    </message>
    <message>
        <source>Last ad</source>
        <translation>Último anúncio</translation>
    </message>
</context>
<context>
    <name>orvella::CountdownGauge</name>
    <message>
        <source>Ad time remaining</source>
        <translation>Tempo restante do anúncio</translation>
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
        <translation>O Orvella está em execução</translation>
    </message>
    <message>
        <source>The app lives in your Mac menu bar and opens at login.</source>
        <translation>O aplicativo fica na barra da área de trabalho e abre ao iniciar a sessão.</translation>
    </message>
    <message>
        <source>Look for $ in the top bar.</source>
        <translation>Procure $ na barra.</translation>
    </message>
    <message>
        <source>When it changes to green $ AD, an ad is available.</source>
        <translation>Quando mudar para $ AD em verde, há um anúncio disponível.</translation>
    </message>
    <message>
        <source>Click $ to open the ad. Auto open still works even if macOS hides it.</source>
        <translation>Um clique em $ abre o anúncio. A abertura automática funciona também sem $.</translation>
    </message>
    <message>
        <source>Orvella keeps $ pinned near the right side of the menu bar. If macOS moves it after a display change, reopening Orvella restores the placement.</source>
        <translation>O Orvella mantém $ perto do lado direito da barra. Se o sistema o mover após uma mudança de tela, reabrir o Orvella restaura a posição.</translation>
    </message>
    <message>
        <source>Auto open ads when available</source>
        <translation>Abrir anúncios disponíveis automaticamente</translation>
    </message>
    <message>
        <source>When enabled, Orvella opens the ad popup automatically when a qualified ad is available. When disabled, the menu bar icon turns green and waits for your click.</source>
        <translation>Se ativado, o Orvella abre a janela do anúncio automaticamente quando há um anúncio qualificado disponível. Se desativado, o ícone da barra fica verde e espera pelo seu clique.</translation>
    </message>
    <message>
        <source>Ad delivery</source>
        <translation>Entrega de anúncios</translation>
    </message>
    <message>
        <source>Manual mode still works: the $ icon changes when an ad is ready.</source>
        <translation>O modo manual continua funcionando: o ícone $ muda quando um anúncio está pronto.</translation>
    </message>
    <message>
        <source>Anonymous mode</source>
        <translation>Modo anônimo</translation>
    </message>
    <message>
        <source>Anonymous mode sends no app-category signals. You can still see ads, but matching is less personalized.</source>
        <translation>O modo anônimo não envia sinais de categorias de aplicativos. Você ainda vê anúncios, mas a seleção é menos personalizada.</translation>
    </message>
    <message>
        <source>Use app category signals</source>
        <translation>Usar sinais de categorias de aplicativos</translation>
    </message>
    <message>
        <source>I am 18 or older</source>
        <translation>Tenho 18 anos ou mais</translation>
    </message>
    <message>
        <source>Ads and earnings are only available for viewers who confirm they are at least 18.</source>
        <translation>Anúncios e ganhos só estão disponíveis para quem confirma ter pelo menos 18 anos.</translation>
    </message>
    <message>
        <source>Privacy</source>
        <translation>Privacidade</translation>
    </message>
    <message>
        <source>Show this window when Orvella starts</source>
        <translation>Mostrar esta janela quando o Orvella iniciar</translation>
    </message>
    <message>
        <source>Controls only this startup window. Orvella still runs in the menu bar when this is off.</source>
        <translation>Afeta apenas esta janela inicial. Mesmo desativado, o Orvella continua funcionando na barra.</translation>
    </message>
    <message>
        <source>Turning this off only hides this startup window. Orvella will still open in the menu bar and keep checking for ads.</source>
        <translation>Desativar só oculta esta janela inicial. O Orvella continuará abrindo na barra e procurando anúncios.</translation>
    </message>
    <message>
        <source>Open dashboard</source>
        <translation>Abrir o painel</translation>
    </message>
    <message>
        <source>Quit Orvella</source>
        <translation>Sair do Orvella</translation>
    </message>
    <message>
        <source>Got it</source>
        <translation>Entendi</translation>
    </message>
    <message>
        <source>Anonymous mode sends no app categories.</source>
        <translation>O modo anônimo não envia categorias de aplicativos.</translation>
    </message>
    <message>
        <source>We send broad categories like Developer tools or Design tools, never raw app names.</source>
        <translation>Enviamos categorias gerais, como “Ferramentas de desenvolvimento” ou “Ferramentas de design”, nunca os nomes dos aplicativos.</translation>
    </message>
</context>
<context>
    <name>orvella::MenuPopoverView</name>
    <message>
        <source>earned</source>
        <translation>ganhos</translation>
    </message>
    <message>
        <source>Open ad</source>
        <translation>Abrir anúncio</translation>
    </message>
    <message>
        <source>Auto open ads</source>
        <translation>Abrir anúncios automaticamente</translation>
    </message>
    <message>
        <source>Automatically opens the ad popup when an ad is ready. If off, click the green $ AD icon manually.</source>
        <translation>Abre a janela do anúncio automaticamente quando um anúncio está pronto. Se desativado, clique no ícone verde $ AD.</translation>
    </message>
    <message>
        <source>Anonymous mode</source>
        <translation>Modo anônimo</translation>
    </message>
    <message>
        <source>Sends no app-category signals. You can still earn, but ads are matched with less context.</source>
        <translation>Não envia sinais de categorias de aplicativos. Você ainda pode ganhar, mas os anúncios são selecionados com menos contexto.</translation>
    </message>
    <message>
        <source>App category signals</source>
        <translation>Sinais de categorias de aplicativos</translation>
    </message>
    <message>
        <source>I am 18 or older</source>
        <translation>Tenho 18 anos ou mais</translation>
    </message>
    <message>
        <source>Required before category signals and paid ad viewing are enabled.</source>
        <translation>Necessário para ativar os sinais de categorias e a exibição remunerada de anúncios.</translation>
    </message>
    <message>
        <source>Advertisers never see your email, device id, raw app names, or open apps.</source>
        <translation>Os anunciantes nunca veem seu e-mail, o identificador do dispositivo, os nomes dos aplicativos nem os aplicativos abertos.</translation>
    </message>
    <message>
        <source>Open at login</source>
        <translation>Abrir ao iniciar a sessão</translation>
    </message>
    <message>
        <source>Starts Orvella automatically when you log in to your Mac.</source>
        <translation>Inicia o Orvella automaticamente quando você inicia a sessão.</translation>
    </message>
    <message>
        <source>Show startup window</source>
        <translation>Mostrar a janela inicial</translation>
    </message>
    <message>
        <source>Controls the larger intro/settings window. Orvella still runs in the menu bar when this is off.</source>
        <translation>Afeta a janela maior de introdução e configurações. Mesmo desativado, o Orvella continua funcionando na barra.</translation>
    </message>
    <message>
        <source>Check for Updates...</source>
        <translation>Verificar atualizações…</translation>
    </message>
    <message>
        <source>Checks Sparkle for the latest Orvella Mac update.</source>
        <translation>Procura a atualização mais recente do Orvella.</translation>
    </message>
    <message>
        <source>Link this Mac</source>
        <translation>Vincular este computador</translation>
    </message>
    <message>
        <source>Linked</source>
        <translation>Vinculado</translation>
    </message>
    <message>
        <source>Link pending</source>
        <translation>Vínculo pendente</translation>
    </message>
    <message>
        <source>Anonymous mode sends no app categories.</source>
        <translation>O modo anônimo não envia categorias de aplicativos.</translation>
    </message>
    <message>
        <source>Category signals send broad labels only.</source>
        <translation>Os sinais de categorias enviam apenas rótulos gerais.</translation>
    </message>
</context>
<context>
    <name>orvella::StatusBarController</name>
    <message>
        <source>Orvella · ad ready</source>
        <translation>Orvella · anúncio pronto</translation>
    </message>
    <message>
        <source>Orvella · %1 available</source>
        <translation>Orvella · %1 disponíveis</translation>
    </message>
</context>
<context>
    <name>orvella::StatusMenu</name>
    <message>
        <source>Open ad</source>
        <translation>Abrir anúncio</translation>
    </message>
    <message>
        <source>Balances and settings</source>
        <translation>Saldos e configurações</translation>
    </message>
    <message>
        <source>About Orvella</source>
        <translation>Sobre o Orvella</translation>
    </message>
    <message>
        <source>Quit Orvella</source>
        <translation>Sair do Orvella</translation>
    </message>
</context>
<context>
    <name>orvella::UpdateWindow</name>
    <message>
        <source>Progress</source>
        <translation>Progresso</translation>
    </message>
    <message>
        <source>Install</source>
        <translation>Instalar</translation>
    </message>
    <message>
        <source>Install version %1</source>
        <translation>Instalar a versão %1</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Cancelar</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Fechar</translation>
    </message>
</context>
</TS>
