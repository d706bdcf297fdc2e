<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="ja" sourcelanguage="en">
<context>
    <name>AtomicFile</name>
    <message>
        <source>A file could not be written: %1.</source>
        <translation>ファイルに書き込めませんでした: %1。</translation>
    </message>
</context>
<context>
    <name>AutostartLoginItem</name>
    <message>
        <source>The entry for starting at login could not be removed: %1.</source>
        <translation>ログイン時に起動するための項目を削除できませんでした: %1。</translation>
    </message>
</context>
<context>
    <name>CommandLine</name>
    <message>
        <source>Unexpected argument &apos;%1&apos;.</source>
        <translation>予期しない引数「%1」です。</translation>
    </message>
    <message>
        <source>The folder of the profile has no name.</source>
        <translation>プロファイルのフォルダーに名前がありません。</translation>
    </message>
    <message>
        <source>Only one of these options can be used: %1.</source>
        <translation>%1 のうち使用できるのは 1 つだけです。</translation>
    </message>
</context>
<context>
    <name>CurlTransport</name>
    <message>
        <source>The server&apos;s certificate belongs to another server.</source>
        <translation>サーバーの証明書は別のサーバーのものです。</translation>
    </message>
    <message>
        <source>The server&apos;s certificate is not valid yet.</source>
        <translation>サーバーの証明書はまだ有効ではありません。</translation>
    </message>
    <message>
        <source>The server&apos;s certificate has expired.</source>
        <translation>サーバーの証明書の有効期限が切れています。</translation>
    </message>
    <message>
        <source>The server&apos;s certificate is not trusted.</source>
        <translation>サーバーの証明書は信頼されていません。</translation>
    </message>
    <message>
        <source>The server could not be found.</source>
        <translation>サーバーが見つかりませんでした。</translation>
    </message>
    <message>
        <source>The proxy could not be found.</source>
        <translation>プロキシが見つかりませんでした。</translation>
    </message>
    <message>
        <source>The proxy did not connect to the server.</source>
        <translation>プロキシがサーバーに接続できませんでした。</translation>
    </message>
    <message>
        <source>The server could not be reached.</source>
        <translation>サーバーに接続できませんでした。</translation>
    </message>
    <message>
        <source>The connection to the server was lost.</source>
        <translation>サーバーとの接続が切れました。</translation>
    </message>
    <message>
        <source>No secure connection to the server could be made.</source>
        <translation>サーバーとの安全な接続を確立できませんでした。</translation>
    </message>
    <message>
        <source>The computer&apos;s list of trusted certificates could not be read.</source>
        <translation>コンピューターの信頼済み証明書の一覧を読み取れませんでした。</translation>
    </message>
    <message>
        <source>The request timed out.</source>
        <translation>リクエストがタイムアウトしました。</translation>
    </message>
    <message>
        <source>The server&apos;s answer could not be understood.</source>
        <translation>サーバーの応答を解釈できませんでした。</translation>
    </message>
    <message>
        <source>The server&apos;s answer was too large.</source>
        <translation>サーバーの応答が大きすぎます。</translation>
    </message>
    <message>
        <source>The server&apos;s address is not valid.</source>
        <translation>サーバーのアドレスが正しくありません。</translation>
    </message>
    <message>
        <source>The request to the server did not succeed.</source>
        <translation>サーバーへのリクエストは成功しませんでした。</translation>
    </message>
    <message>
        <source>The request could not be written.</source>
        <translation>リクエストを書き込めませんでした。</translation>
    </message>
</context>
<context>
    <name>Json</name>
    <message>
        <source>The text is not valid JSON.</source>
        <translation>テキストは正しい JSON ではありません。</translation>
    </message>
    <message>
        <source>The text could not be written as JSON.</source>
        <translation>テキストを JSON として書き込めませんでした。</translation>
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
        <translation>デフォルトのキーリング</translation>
    </message>
</context>
<context>
    <name>OverlaySettings</name>
    <message>
        <source>&quot;%1&quot; is not of the form KEY=VALUE.</source>
        <translation>「%1」は KEY=VALUE の形式ではありません。</translation>
    </message>
</context>
<context>
    <name>PluginUpdater</name>
    <message>
        <source>The part of Orvella that looks for updates does not fit this version. Look for updates in your software centre.</source>
        <translation>Orvella のアップデート確認機能がこのバージョンに対応していません。ソフトウェアセンターでアップデートを確認してください。</translation>
    </message>
    <message>
        <source>Orvella was updated while it was running. Quit it and start it again before you look for updates.</source>
        <translation>Orvella は実行中に更新されました。一度終了し、もう一度起動してからアップデートを確認してください。</translation>
    </message>
    <message>
        <source>This Orvella is a Flatpak, and Flatpak brings its updates. Look for them in your software centre.</source>
        <translation>この Orvella は Flatpak であり、アップデートは Flatpak から届きます。ソフトウェアセンターで確認してください。</translation>
    </message>
    <message>
        <source>This Orvella is an AppImage, which is a single file. A newer version is a newer file: get it where you got this one.</source>
        <translation>この Orvella は AppImage、つまり 1 つのファイルです。新しいバージョンは新しいファイルとして提供されます。このファイルの入手元から入手してください。</translation>
    </message>
    <message>
        <source>If Orvella came with the packages of your system, it is updated together with them: look for updates in your software centre. Otherwise get a newer version where you got this one.</source>
        <translation>Orvella がシステムのパッケージから入れられたものであれば、パッケージと一緒に更新されます。ソフトウェアセンターでアップデートを確認してください。そうでなければ、新しいバージョンはこのバージョンの入手元から入手してください。</translation>
    </message>
</context>
<context>
    <name>PortalLoginItem</name>
    <message>
        <source>The desktop does not let Orvella start at login.</source>
        <translation>デスクトップが Orvella のログイン時の起動を許可していません。</translation>
    </message>
    <message>
        <source>The desktop cannot change whether Orvella starts at login.</source>
        <translation>ログイン時に Orvella を起動するかどうかを、デスクトップで変更できません。</translation>
    </message>
    <message>
        <source>Orvella waits in the desktop&apos;s bar until there is an ad.</source>
        <translation>Orvella は広告が届くまでデスクトップのバーで待機します。</translation>
    </message>
</context>
<context>
    <name>Record</name>
    <message>
        <source>is not true or false</source>
        <translation>が真偽値ではありません</translation>
    </message>
    <message>
        <source>is not an integer</source>
        <translation>が整数ではありません</translation>
    </message>
    <message>
        <source>is not a number</source>
        <translation>が数値ではありません</translation>
    </message>
    <message>
        <source>is not a text</source>
        <translation>がテキストではありません</translation>
    </message>
    <message>
        <source>is not a list</source>
        <translation>がリストではありません</translation>
    </message>
    <message>
        <source>is missing</source>
        <translation>がありません</translation>
    </message>
    <message>
        <source>is not an object</source>
        <translation>がオブジェクトではありません</translation>
    </message>
    <message>
        <source>is not JSON</source>
        <translation>が JSON ではありません</translation>
    </message>
    <message>
        <source>The service&apos;s answer could not be read: it %1.</source>
        <translation>サービスの応答を読み取れませんでした: 応答%1。</translation>
    </message>
    <message>
        <source>The service&apos;s answer could not be read: %1 %2.</source>
        <translation>サービスの応答を読み取れませんでした: %1 %2。</translation>
    </message>
</context>
<context>
    <name>ServiceCall</name>
    <message>
        <source>The service could not answer the request.</source>
        <translation>サービスはリクエストに応答できませんでした。</translation>
    </message>
    <message>
        <source>The network answers in place of the service. You may have to sign in to it first.</source>
        <translation>サービスの代わりにネットワークが応答しています。先にネットワークへのサインインが必要かもしれません。</translation>
    </message>
</context>
<context>
    <name>UpdateTexts</name>
    <message>
        <source>Preparing the installation…</source>
        <translation>インストールを準備しています…</translation>
    </message>
    <message>
        <source>Waiting until your system is done with other installations…</source>
        <translation>ほかのインストールが終わるのを待っています…</translation>
    </message>
    <message>
        <source>Waiting for your permission…</source>
        <translation>許可を待っています…</translation>
    </message>
    <message>
        <source>Downloading…</source>
        <translation>ダウンロードしています…</translation>
    </message>
    <message>
        <source>Installing…</source>
        <translation>インストールしています…</translation>
    </message>
    <message>
        <source>It was cancelled.</source>
        <translation>キャンセルされました。</translation>
    </message>
    <message>
        <source>PackageKit, which installs updates, is not there. Look for updates in your software centre.</source>
        <translation>アップデートをインストールする PackageKit がありません。ソフトウェアセンターでアップデートを確認してください。</translation>
    </message>
    <message>
        <source>Your system did not allow it.</source>
        <translation>システムによって許可されませんでした。</translation>
    </message>
    <message>
        <source>There is no network.</source>
        <translation>ネットワークに接続されていません。</translation>
    </message>
    <message>
        <source>Another program is installing software. Try again when it is done.</source>
        <translation>ほかのプログラムがソフトウェアをインストールしています。終わってからもう一度お試しください。</translation>
    </message>
    <message>
        <source>The update is not signed by a source that your system trusts.</source>
        <translation>アップデートは、システムが信頼する提供元によって署名されていません。</translation>
    </message>
    <message>
        <source>The update would remove other programs. Your software centre shows which ones.</source>
        <translation>このアップデートはほかのプログラムを削除します。対象はソフトウェアセンターで確認できます。</translation>
    </message>
    <message>
        <source>This Orvella did not come with the packages of your system, so they do not bring its updates.</source>
        <translation>この Orvella はシステムのパッケージから入れられたものではないため、パッケージでは更新されません。</translation>
    </message>
    <message>
        <source>Your system&apos;s package service does not answer.</source>
        <translation>システムのパッケージサービスが応答しません。</translation>
    </message>
    <message>
        <source>Your system&apos;s package service ended before it was done.</source>
        <translation>システムのパッケージサービスが途中で終了しました。</translation>
    </message>
    <message>
        <source>Your system&apos;s package service reports an error.</source>
        <translation>システムのパッケージサービスがエラーを報告しました。</translation>
    </message>
    <message>
        <source>Your system&apos;s package service reports: %1</source>
        <translation>システムのパッケージサービスからの報告: %1</translation>
    </message>
    <message>
        <source>Looking for a newer version…</source>
        <translation>新しいバージョンを確認しています…</translation>
    </message>
    <message>
        <source>Orvella is up to date.</source>
        <translation>Orvella は最新です。</translation>
    </message>
    <message>
        <source>Version %1 is available.</source>
        <translation>バージョン %1 が利用できます。</translation>
    </message>
    <message>
        <source>Installing version %1…</source>
        <translation>バージョン %1 をインストールしています…</translation>
    </message>
    <message>
        <source>Version %1 is installed.</source>
        <translation>バージョン %1 がインストールされました。</translation>
    </message>
    <message>
        <source>Orvella could not look for updates.</source>
        <translation>Orvella はアップデートを確認できませんでした。</translation>
    </message>
    <message>
        <source>Version %1 could not be installed.</source>
        <translation>バージョン %1 をインストールできませんでした。</translation>
    </message>
    <message>
        <source>You have version %1.</source>
        <translation>お使いのバージョンは %1 です。</translation>
    </message>
    <message>
        <source>You have version %1. The list of packages could not be renewed, so there may be a newer one.</source>
        <translation>お使いのバージョンは %1 です。パッケージの一覧を更新できなかったため、新しいバージョンがあるかもしれません。</translation>
    </message>
    <message>
        <source>Your system is set to keep version %1.</source>
        <translation>システムはバージョン %1 を維持するように設定されています。</translation>
    </message>
    <message>
        <source>It takes effect when Orvella is started again.</source>
        <translation>Orvella を次に起動したときに有効になります。</translation>
    </message>
</context>
<context>
    <name>orvella::AdDisclosure</name>
    <message>
        <source>Broad delivery matched your language. No app category was used.</source>
        <translation>言語に合わせて広く配信された広告です。アプリのカテゴリは使われていません。</translation>
    </message>
    <message>
        <source>Matched using consented broad categories: %1. Raw app names were not sent.</source>
        <translation>同意いただいた大まかなカテゴリに基づいて選ばれました: %1。アプリ名は送信されていません。</translation>
    </message>
    <message>
        <source>Paid ad by %1</source>
        <translation>%1 の有料広告</translation>
    </message>
    <message>
        <source>Change category matching from the Orvella menu. Anonymous mode disables category targeting.</source>
        <translation>カテゴリによる選択は Orvella のメニューで変更できます。匿名モードではカテゴリによるターゲティングは行われません。</translation>
    </message>
</context>
<context>
    <name>orvella::AdWindowController</name>
    <message>
        <source>Ad</source>
        <translation>広告</translation>
    </message>
    <message>
        <source>Ad information</source>
        <translation>広告の情報</translation>
    </message>
</context>
<context>
    <name>orvella::AdWindowView</name>
    <message>
        <source>Paid</source>
        <translation>付与済み</translation>
    </message>
    <message>
        <source>Open ad: %1</source>
        <translation>広告を開く: %1</translation>
    </message>
    <message>
        <source>Why you are seeing this ad</source>
        <translation>この広告が表示される理由</translation>
    </message>
    <message>
        <source>Ad information</source>
        <translation>広告の情報</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>閉じる</translation>
    </message>
    <message>
        <source>Dismiss without earning</source>
        <translation>報酬を受け取らずに閉じる</translation>
    </message>
    <message>
        <source>Close ad</source>
        <translation>広告を閉じる</translation>
    </message>
    <message>
        <source>Dismiss ad without earning</source>
        <translation>報酬を受け取らずに広告を閉じる</translation>
    </message>
</context>
<context>
    <name>orvella::BalancesView</name>
    <message>
        <source>Available</source>
        <translation>利用可能</translation>
    </message>
    <message>
        <source>Pending</source>
        <translation>保留中</translation>
    </message>
    <message>
        <source>Lifetime</source>
        <translation>累計</translation>
    </message>
    <message>
        <source>Paid out</source>
        <translation>支払い済み</translation>
    </message>
    <message>
        <source>Last ad</source>
        <translation>前回の広告</translation>
    </message>
</context>
<context>
    <name>orvella::CountdownGauge</name>
    <message>
        <source>Ad time remaining</source>
        <translation>広告の残り時間</translation>
    </message>
    <message>
        <source>%1 seconds</source>
        <translation>%1 秒</translation>
    </message>
</context>
<context>
    <name>orvella::LaunchWindowView</name>
    <message>
        <source>Orvella is running</source>
        <translation>Orvella は動作中です</translation>
    </message>
    <message>
        <source>The app lives in your Mac menu bar and opens at login.</source>
        <translation>このアプリはデスクトップのバーに常駐し、ログイン時に開きます。</translation>
    </message>
    <message>
        <source>Look for $ in the top bar.</source>
        <translation>バーにある $ を探してください。</translation>
    </message>
    <message>
        <source>When it changes to green $ AD, an ad is available.</source>
        <translation>緑色の $ AD に変わったら、広告があります。</translation>
    </message>
    <message>
        <source>Click $ to open the ad. Auto open still works even if macOS hides it.</source>
        <translation>$ をクリックすると広告が開きます。隠れていても自動で開きます。</translation>
    </message>
    <message>
        <source>Orvella keeps $ pinned near the right side of the menu bar. If macOS moves it after a display change, reopening Orvella restores the placement.</source>
        <translation>Orvella は $ をバーの右側に保ちます。画面の変更後にシステムが移動させた場合は、Orvella を開き直すと元の位置に戻ります。</translation>
    </message>
    <message>
        <source>Auto open ads when available</source>
        <translation>広告があるときに自動で開く</translation>
    </message>
    <message>
        <source>When enabled, Orvella opens the ad popup automatically when a qualified ad is available. When disabled, the menu bar icon turns green and waits for your click.</source>
        <translation>オンにすると、条件に合う広告があるときに Orvella が広告ウィンドウを自動で開きます。オフにすると、バーのアイコンが緑色になり、クリックを待ちます。</translation>
    </message>
    <message>
        <source>Ad delivery</source>
        <translation>広告の配信</translation>
    </message>
    <message>
        <source>Manual mode still works: the $ icon changes when an ad is ready.</source>
        <translation>手動でも利用できます。広告の準備ができると $ アイコンが変わります。</translation>
    </message>
    <message>
        <source>Anonymous mode</source>
        <translation>匿名モード</translation>
    </message>
    <message>
        <source>Anonymous mode sends no app-category signals. You can still see ads, but matching is less personalized.</source>
        <translation>匿名モードではアプリカテゴリのシグナルを送信しません。広告は引き続き表示されますが、個人に合わせた選択は少なくなります。</translation>
    </message>
    <message>
        <source>Use app category signals</source>
        <translation>アプリカテゴリのシグナルを使う</translation>
    </message>
    <message>
        <source>I am 18 or older</source>
        <translation>18 歳以上です</translation>
    </message>
    <message>
        <source>Ads and earnings are only available for viewers who confirm they are at least 18.</source>
        <translation>広告と報酬は、18 歳以上であることを確認した方だけが利用できます。</translation>
    </message>
    <message>
        <source>Privacy</source>
        <translation>プライバシー</translation>
    </message>
    <message>
        <source>Show this window when Orvella starts</source>
        <translation>Orvella の起動時にこのウィンドウを表示する</translation>
    </message>
    <message>
        <source>Controls only this startup window. Orvella still runs in the menu bar when this is off.</source>
        <translation>この起動ウィンドウだけの設定です。オフにしても Orvella はバーで動作し続けます。</translation>
    </message>
    <message>
        <source>Turning this off only hides this startup window. Orvella will still open in the menu bar and keep checking for ads.</source>
        <translation>オフにしても、この起動ウィンドウが表示されなくなるだけです。Orvella は引き続きバーで開き、広告を確認します。</translation>
    </message>
    <message>
        <source>Open dashboard</source>
        <translation>ダッシュボードを開く</translation>
    </message>
    <message>
        <source>Quit Orvella</source>
        <translation>Orvella を終了</translation>
    </message>
    <message>
        <source>Got it</source>
        <translation>了解</translation>
    </message>
    <message>
        <source>Anonymous mode sends no app categories.</source>
        <translation>匿名モードではアプリのカテゴリを送信しません。</translation>
    </message>
    <message>
        <source>We send broad categories like Developer tools or Design tools, never raw app names.</source>
        <translation>「開発ツール」や「デザインツール」のような大まかなカテゴリだけを送信し、アプリ名は決して送信しません。</translation>
    </message>
</context>
<context>
    <name>orvella::MenuPopoverView</name>
    <message>
        <source>earned</source>
        <translation>獲得額</translation>
    </message>
    <message>
        <source>Open ad</source>
        <translation>広告を開く</translation>
    </message>
    <message>
        <source>Auto open ads</source>
        <translation>広告を自動で開く</translation>
    </message>
    <message>
        <source>Automatically opens the ad popup when an ad is ready. If off, click the green $ AD icon manually.</source>
        <translation>広告の準備ができると広告ウィンドウを自動で開きます。オフの場合は、緑色の $ AD アイコンをクリックしてください。</translation>
    </message>
    <message>
        <source>Anonymous mode</source>
        <translation>匿名モード</translation>
    </message>
    <message>
        <source>Sends no app-category signals. You can still earn, but ads are matched with less context.</source>
        <translation>アプリカテゴリのシグナルを送信しません。報酬は引き続き得られますが、広告はより少ない情報で選ばれます。</translation>
    </message>
    <message>
        <source>App category signals</source>
        <translation>アプリカテゴリのシグナル</translation>
    </message>
    <message>
        <source>I am 18 or older</source>
        <translation>18 歳以上です</translation>
    </message>
    <message>
        <source>Required before category signals and paid ad viewing are enabled.</source>
        <translation>カテゴリのシグナルと報酬付きの広告視聴を有効にする前に必要です。</translation>
    </message>
    <message>
        <source>Advertisers never see your email, device id, raw app names, or open apps.</source>
        <translation>広告主に、メールアドレス、デバイス ID、アプリ名、開いているアプリが知られることはありません。</translation>
    </message>
    <message>
        <source>Open at login</source>
        <translation>ログイン時に開く</translation>
    </message>
    <message>
        <source>Starts Orvella automatically when you log in to your Mac.</source>
        <translation>ログインすると Orvella を自動で起動します。</translation>
    </message>
    <message>
        <source>Show startup window</source>
        <translation>起動ウィンドウを表示する</translation>
    </message>
    <message>
        <source>Controls the larger intro/settings window. Orvella still runs in the menu bar when this is off.</source>
        <translation>紹介と設定の大きいウィンドウの表示を切り替えます。オフにしても Orvella はバーで動作し続けます。</translation>
    </message>
    <message>
        <source>Check for Updates...</source>
        <translation>アップデートを確認…</translation>
    </message>
    <message>
        <source>Checks Sparkle for the latest Orvella Mac update.</source>
        <translation>Orvella の最新のアップデートを確認します。</translation>
    </message>
    <message>
        <source>Link this Mac</source>
        <translation>このコンピューターをリンク</translation>
    </message>
    <message>
        <source>Linked</source>
        <translation>リンク済み</translation>
    </message>
    <message>
        <source>Link pending</source>
        <translation>リンク待ち</translation>
    </message>
    <message>
        <source>Anonymous mode sends no app categories.</source>
        <translation>匿名モードではアプリのカテゴリを送信しません。</translation>
    </message>
    <message>
        <source>Category signals send broad labels only.</source>
        <translation>カテゴリのシグナルでは大まかな分類だけを送信します。</translation>
    </message>
</context>
<context>
    <name>orvella::StatusBarController</name>
    <message>
        <source>Orvella · ad ready</source>
        <translation>Orvella · 広告の準備完了</translation>
    </message>
    <message>
        <source>Orvella · %1 available</source>
        <translation>Orvella · %1 利用可能</translation>
    </message>
</context>
<context>
    <name>orvella::StatusMenu</name>
    <message>
        <source>Open ad</source>
        <translation>広告を開く</translation>
    </message>
    <message>
        <source>Balances and settings</source>
        <translation>残高と設定</translation>
    </message>
    <message>
        <source>About Orvella</source>
        <translation>Orvella について</translation>
    </message>
    <message>
        <source>Quit Orvella</source>
        <translation>Orvella を終了</translation>
    </message>
</context>
<context>
    <name>orvella::UpdateWindow</name>
    <message>
        <source>Progress</source>
        <translation>進行状況</translation>
    </message>
    <message>
        <source>Install</source>
        <translation>インストール</translation>
    </message>
    <message>
        <source>Install version %1</source>
        <translation>バージョン %1 をインストール</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>キャンセル</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>閉じる</translation>
    </message>
</context>
</TS>
