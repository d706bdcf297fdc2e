<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="ar" sourcelanguage="en">
<context>
    <name>AtomicFile</name>
    <message>
        <source>A file could not be written: %1.</source>
        <translation>تعذّرت كتابة ملف: %1.</translation>
    </message>
</context>
<context>
    <name>AutostartLoginItem</name>
    <message>
        <source>The entry for starting at login could not be removed: %1.</source>
        <translation>تعذّرت إزالة مُدخلة البدء عند الدخول: %1.</translation>
    </message>
</context>
<context>
    <name>CommandLine</name>
    <message>
        <source>Unexpected argument &apos;%1&apos;.</source>
        <translation>معامل غير متوقع «%1».</translation>
    </message>
    <message>
        <source>The folder of the profile has no name.</source>
        <translation>لا اسم لمجلد الملف الشخصي.</translation>
    </message>
    <message>
        <source>Only one of these options can be used: %1.</source>
        <translation>لا يمكن استخدام سوى واحد من هذه الخيارات: %1.</translation>
    </message>
</context>
<context>
    <name>CurlTransport</name>
    <message>
        <source>The server&apos;s certificate belongs to another server.</source>
        <translation>شهادة الخادم تخص خادمًا آخر.</translation>
    </message>
    <message>
        <source>The server&apos;s certificate is not valid yet.</source>
        <translation>شهادة الخادم غير صالحة بعد.</translation>
    </message>
    <message>
        <source>The server&apos;s certificate has expired.</source>
        <translation>انتهت صلاحية شهادة الخادم.</translation>
    </message>
    <message>
        <source>The server&apos;s certificate is not trusted.</source>
        <translation>شهادة الخادم غير موثوقة.</translation>
    </message>
    <message>
        <source>The server could not be found.</source>
        <translation>تعذّر العثور على الخادم.</translation>
    </message>
    <message>
        <source>The proxy could not be found.</source>
        <translation>تعذّر العثور على الوسيط.</translation>
    </message>
    <message>
        <source>The proxy did not connect to the server.</source>
        <translation>لم يتصل الوسيط بالخادم.</translation>
    </message>
    <message>
        <source>The server could not be reached.</source>
        <translation>تعذّر الوصول إلى الخادم.</translation>
    </message>
    <message>
        <source>The connection to the server was lost.</source>
        <translation>انقطع الاتصال بالخادم.</translation>
    </message>
    <message>
        <source>No secure connection to the server could be made.</source>
        <translation>تعذّر إجراء اتصال آمن بالخادم.</translation>
    </message>
    <message>
        <source>The computer&apos;s list of trusted certificates could not be read.</source>
        <translation>تعذّرت قراءة قائمة الشهادات الموثوقة في الحاسوب.</translation>
    </message>
    <message>
        <source>The request timed out.</source>
        <translation>انتهت مهلة الطلب.</translation>
    </message>
    <message>
        <source>The server&apos;s answer could not be understood.</source>
        <translation>تعذّر فهم رد الخادم.</translation>
    </message>
    <message>
        <source>The server&apos;s answer was too large.</source>
        <translation>رد الخادم كبير جدًا.</translation>
    </message>
    <message>
        <source>The server&apos;s address is not valid.</source>
        <translation>عنوان الخادم غير صالح.</translation>
    </message>
    <message>
        <source>The request to the server did not succeed.</source>
        <translation>لم ينجح الطلب إلى الخادم.</translation>
    </message>
    <message>
        <source>The request could not be written.</source>
        <translation>تعذّرت كتابة الطلب.</translation>
    </message>
</context>
<context>
    <name>Json</name>
    <message>
        <source>The text is not valid JSON.</source>
        <translation>النص ليس JSON صالحًا.</translation>
    </message>
    <message>
        <source>The text could not be written as JSON.</source>
        <translation>تعذّرت كتابة النص بصيغة JSON.</translation>
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
        <translation>حلقة المفاتيح المبدئية</translation>
    </message>
</context>
<context>
    <name>OverlaySettings</name>
    <message>
        <source>&quot;%1&quot; is not of the form KEY=VALUE.</source>
        <translation>«%1» ليس بالصيغة KEY=VALUE.</translation>
    </message>
</context>
<context>
    <name>PluginUpdater</name>
    <message>
        <source>The part of Orvella that looks for updates does not fit this version. Look for updates in your software centre.</source>
        <translation>جزء Orvella الذي يبحث عن التحديثات لا يلائم هذا الإصدار. ابحث عن التحديثات في مركز البرمجيات.</translation>
    </message>
    <message>
        <source>Orvella was updated while it was running. Quit it and start it again before you look for updates.</source>
        <translation>حُدِّث Orvella أثناء تشغيله. أغلقه وشغّله من جديد قبل أن تبحث عن التحديثات.</translation>
    </message>
    <message>
        <source>This Orvella is a Flatpak, and Flatpak brings its updates. Look for them in your software centre.</source>
        <translation>‏Orvella هذا حزمة Flatpak، وتحديثاته تأتي عبر Flatpak. ابحث عنها في مركز البرمجيات.</translation>
    </message>
    <message>
        <source>This Orvella is an AppImage, which is a single file. A newer version is a newer file: get it where you got this one.</source>
        <translation>‏Orvella هذا من نوع AppImage، أي أنه ملف واحد. والإصدار الأحدث ملف أحدث: احصل عليه من حيث حصلت على هذا الملف.</translation>
    </message>
    <message>
        <source>If Orvella came with the packages of your system, it is updated together with them: look for updates in your software centre. Otherwise get a newer version where you got this one.</source>
        <translation>إذا كان Orvella قد أتى مع حزم نظامك فإنه يُحدَّث معها: ابحث عن التحديثات في مركز البرمجيات. وإلا فاحصل على الإصدار الأحدث من حيث حصلت على هذا الإصدار.</translation>
    </message>
</context>
<context>
    <name>PortalLoginItem</name>
    <message>
        <source>The desktop does not let Orvella start at login.</source>
        <translation>لا يسمح سطح المكتب ببدء Orvella عند الدخول.</translation>
    </message>
    <message>
        <source>The desktop cannot change whether Orvella starts at login.</source>
        <translation>لا يستطيع سطح المكتب تغيير ما إذا كان Orvella يبدأ عند الدخول.</translation>
    </message>
    <message>
        <source>Orvella waits in the desktop&apos;s bar until there is an ad.</source>
        <translation>ينتظر Orvella في شريط سطح المكتب إلى أن يتوفر إعلان.</translation>
    </message>
</context>
<context>
    <name>Record</name>
    <message>
        <source>is not true or false</source>
        <translation>ليس صوابًا ولا خطأ</translation>
    </message>
    <message>
        <source>is not an integer</source>
        <translation>ليس عددًا صحيحًا</translation>
    </message>
    <message>
        <source>is not a number</source>
        <translation>ليس عددًا</translation>
    </message>
    <message>
        <source>is not a text</source>
        <translation>ليس نصًا</translation>
    </message>
    <message>
        <source>is not a list</source>
        <translation>ليس قائمة</translation>
    </message>
    <message>
        <source>is missing</source>
        <translation>مفقود</translation>
    </message>
    <message>
        <source>is not an object</source>
        <translation>ليس كائنًا</translation>
    </message>
    <message>
        <source>is not JSON</source>
        <translation>ليس JSON</translation>
    </message>
    <message>
        <source>The service&apos;s answer could not be read: it %1.</source>
        <translation>تعذّرت قراءة رد الخدمة: فهو %1.</translation>
    </message>
    <message>
        <source>The service&apos;s answer could not be read: %1 %2.</source>
        <translation>تعذّرت قراءة رد الخدمة: %1 %2.</translation>
    </message>
</context>
<context>
    <name>ServiceCall</name>
    <message>
        <source>The service could not answer the request.</source>
        <translation>تعذّر على الخدمة الرد على الطلب.</translation>
    </message>
    <message>
        <source>The network answers in place of the service. You may have to sign in to it first.</source>
        <translation>تجيب الشبكة بدلًا من الخدمة. قد تحتاج إلى تسجيل الدخول إليها أولًا.</translation>
    </message>
</context>
<context>
    <name>UpdateTexts</name>
    <message>
        <source>Preparing the installation…</source>
        <translation>يجري تحضير التثبيت…</translation>
    </message>
    <message>
        <source>Waiting until your system is done with other installations…</source>
        <translation>في انتظار أن ينتهي نظامك من عمليات تثبيت أخرى…</translation>
    </message>
    <message>
        <source>Waiting for your permission…</source>
        <translation>في انتظار إذنك…</translation>
    </message>
    <message>
        <source>Downloading…</source>
        <translation>يجري التنزيل…</translation>
    </message>
    <message>
        <source>Installing…</source>
        <translation>يجري التثبيت…</translation>
    </message>
    <message>
        <source>It was cancelled.</source>
        <translation>أُلغيت العملية.</translation>
    </message>
    <message>
        <source>PackageKit, which installs updates, is not there. Look for updates in your software centre.</source>
        <translation>‏PackageKit، الذي يثبّت التحديثات، غير موجود. ابحث عن التحديثات في مركز البرمجيات.</translation>
    </message>
    <message>
        <source>Your system did not allow it.</source>
        <translation>لم يسمح نظامك بذلك.</translation>
    </message>
    <message>
        <source>There is no network.</source>
        <translation>لا يوجد اتصال بالشبكة.</translation>
    </message>
    <message>
        <source>Another program is installing software. Try again when it is done.</source>
        <translation>برنامج آخر يثبّت برمجيات الآن. حاول مجددًا عندما ينتهي.</translation>
    </message>
    <message>
        <source>The update is not signed by a source that your system trusts.</source>
        <translation>التحديث غير موقّع من مصدر يثق به نظامك.</translation>
    </message>
    <message>
        <source>The update would remove other programs. Your software centre shows which ones.</source>
        <translation>سيزيل التحديث برامج أخرى. يبيّن مركز البرمجيات أيّها.</translation>
    </message>
    <message>
        <source>This Orvella did not come with the packages of your system, so they do not bring its updates.</source>
        <translation>لم يأتِ Orvella هذا مع حزم نظامك، ولذلك لا تجلب تحديثاته.</translation>
    </message>
    <message>
        <source>Your system&apos;s package service does not answer.</source>
        <translation>خدمة الحزم في نظامك لا تستجيب.</translation>
    </message>
    <message>
        <source>Your system&apos;s package service ended before it was done.</source>
        <translation>توقفت خدمة الحزم في نظامك قبل أن تنتهي.</translation>
    </message>
    <message>
        <source>Your system&apos;s package service reports an error.</source>
        <translation>أبلغت خدمة الحزم في نظامك عن خطأ.</translation>
    </message>
    <message>
        <source>Your system&apos;s package service reports: %1</source>
        <translation>تقول خدمة الحزم في نظامك: %1</translation>
    </message>
    <message>
        <source>Looking for a newer version…</source>
        <translation>يجري البحث عن إصدار أحدث…</translation>
    </message>
    <message>
        <source>Orvella is up to date.</source>
        <translation>‏Orvella محدَّث.</translation>
    </message>
    <message>
        <source>Version %1 is available.</source>
        <translation>الإصدار %1 متاح.</translation>
    </message>
    <message>
        <source>Installing version %1…</source>
        <translation>يجري تثبيت الإصدار %1…</translation>
    </message>
    <message>
        <source>Version %1 is installed.</source>
        <translation>ثُبِّت الإصدار %1.</translation>
    </message>
    <message>
        <source>Orvella could not look for updates.</source>
        <translation>لم يتمكن Orvella من البحث عن التحديثات.</translation>
    </message>
    <message>
        <source>Version %1 could not be installed.</source>
        <translation>تعذّر تثبيت الإصدار %1.</translation>
    </message>
    <message>
        <source>You have version %1.</source>
        <translation>لديك الإصدار %1.</translation>
    </message>
    <message>
        <source>You have version %1. The list of packages could not be renewed, so there may be a newer one.</source>
        <translation>لديك الإصدار %1. تعذّر تجديد قائمة الحزم، فقد يوجد إصدار أحدث.</translation>
    </message>
    <message>
        <source>Your system is set to keep version %1.</source>
        <translation>نظامك مضبوط على إبقاء الإصدار %1.</translation>
    </message>
    <message>
        <source>It takes effect when Orvella is started again.</source>
        <translation>سيُستخدم عندما يُشغَّل Orvella من جديد.</translation>
    </message>
</context>
<context>
    <name>orvella::AdDisclosure</name>
    <message>
        <source>Broad delivery matched your language. No app category was used.</source>
        <translation>وُزّع الإعلان على نطاق واسع حسب لغتك. لم تُستخدم أي فئة تطبيقات.</translation>
    </message>
    <message>
        <source>Matched using consented broad categories: %1. Raw app names were not sent.</source>
        <translation>اختير الإعلان حسب فئات عامة وافقت عليها: %1. لم تُرسل أسماء التطبيقات.</translation>
    </message>
    <message>
        <source>Paid ad by %1</source>
        <translation>إعلان مدفوع من %1</translation>
    </message>
    <message>
        <source>Change category matching from the Orvella menu. Anonymous mode disables category targeting.</source>
        <translation>غيّر المطابقة حسب الفئات من قائمة Orvella. يعطّل الوضع المجهول الاستهداف حسب الفئات.</translation>
    </message>
</context>
<context>
    <name>orvella::AdWindowController</name>
    <message>
        <source>Ad</source>
        <translation>إعلان</translation>
    </message>
    <message>
        <source>Ad information</source>
        <translation>معلومات الإعلان</translation>
    </message>
</context>
<context>
    <name>orvella::AdWindowView</name>
    <message>
        <source>Paid</source>
        <translation>تم الدفع لك</translation>
    </message>
    <message>
        <source>Open ad: %1</source>
        <translation>افتح الإعلان: %1</translation>
    </message>
    <message>
        <source>Why you are seeing this ad</source>
        <translation>لماذا ترى هذا الإعلان</translation>
    </message>
    <message>
        <source>Ad information</source>
        <translation>معلومات الإعلان</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>أغلق</translation>
    </message>
    <message>
        <source>Dismiss without earning</source>
        <translation>أغلق دون ربح</translation>
    </message>
    <message>
        <source>Close ad</source>
        <translation>أغلق الإعلان</translation>
    </message>
    <message>
        <source>Dismiss ad without earning</source>
        <translation>أغلق الإعلان دون ربح</translation>
    </message>
</context>
<context>
    <name>orvella::BalancesView</name>
    <message>
        <source>Available</source>
        <translation>المتاح</translation>
    </message>
    <message>
        <source>Pending</source>
        <translation>المعلّق</translation>
    </message>
    <message>
        <source>Lifetime</source>
        <translation>الإجمالي</translation>
    </message>
    <message>
        <source>Paid out</source>
        <translation>المدفوع</translation>
    </message>
    <message>
        <source>Last ad</source>
        <translation>آخر إعلان</translation>
    </message>
</context>
<context>
    <name>orvella::CountdownGauge</name>
    <message>
        <source>Ad time remaining</source>
        <translation>الوقت المتبقي للإعلان</translation>
    </message>
    <message>
        <source>%1 seconds</source>
        <translation>الثواني: %1</translation>
    </message>
</context>
<context>
    <name>orvella::LaunchWindowView</name>
    <message>
        <source>Orvella is running</source>
        <translation>تطبيق Orvella يعمل</translation>
    </message>
    <message>
        <source>The app lives in your Mac menu bar and opens at login.</source>
        <translation>يعيش التطبيق في شريط سطح المكتب ويُفتح عند الدخول.</translation>
    </message>
    <message>
        <source>Look for $ in the top bar.</source>
        <translation>ابحث عن $ في الشريط.</translation>
    </message>
    <message>
        <source>When it changes to green $ AD, an ad is available.</source>
        <translation>عندما تتحول إلى ‎$ AD باللون الأخضر، يتوفر إعلان.</translation>
    </message>
    <message>
        <source>Click $ to open the ad. Auto open still works even if macOS hides it.</source>
        <translation>انقر على $ لفتح الإعلان. ويعمل الفتح التلقائي حتى لو أخفاها النظام.</translation>
    </message>
    <message>
        <source>Orvella keeps $ pinned near the right side of the menu bar. If macOS moves it after a display change, reopening Orvella restores the placement.</source>
        <translation>يُبقي Orvella علامة $ قرب طرف الشريط. وإذا نقلها النظام بعد تغيّر الشاشة، فإن إعادة فتح Orvella تعيدها إلى مكانها.</translation>
    </message>
    <message>
        <source>Auto open ads when available</source>
        <translation>افتح الإعلانات تلقائيًا عند توفرها</translation>
    </message>
    <message>
        <source>When enabled, Orvella opens the ad popup automatically when a qualified ad is available. When disabled, the menu bar icon turns green and waits for your click.</source>
        <translation>عند تفعيله، يفتح Orvella نافذة الإعلان تلقائيًا حين يتوفر إعلان مؤهل. وعند تعطيله، تصبح الأيقونة في الشريط خضراء وتنتظر نقرتك.</translation>
    </message>
    <message>
        <source>Ad delivery</source>
        <translation>عرض الإعلانات</translation>
    </message>
    <message>
        <source>Manual mode still works: the $ icon changes when an ad is ready.</source>
        <translation>يظل الوضع اليدوي متاحًا: تتغير أيقونة $ عندما يجهز إعلان.</translation>
    </message>
    <message>
        <source>Anonymous mode</source>
        <translation>الوضع المجهول</translation>
    </message>
    <message>
        <source>Anonymous mode sends no app-category signals. You can still see ads, but matching is less personalized.</source>
        <translation>لا يرسل الوضع المجهول إشارات فئات التطبيقات. ستظل ترى الإعلانات، لكن المطابقة تكون أقل تخصيصًا.</translation>
    </message>
    <message>
        <source>Use app category signals</source>
        <translation>استخدم إشارات فئات التطبيقات</translation>
    </message>
    <message>
        <source>I am 18 or older</source>
        <translation>عمري 18 عامًا أو أكثر</translation>
    </message>
    <message>
        <source>Ads and earnings are only available for viewers who confirm they are at least 18.</source>
        <translation>الإعلانات والأرباح متاحة فقط لمن يؤكد أن عمره 18 عامًا على الأقل.</translation>
    </message>
    <message>
        <source>Privacy</source>
        <translation>الخصوصية</translation>
    </message>
    <message>
        <source>Show this window when Orvella starts</source>
        <translation>أظهر هذه النافذة عند بدء Orvella</translation>
    </message>
    <message>
        <source>Controls only this startup window. Orvella still runs in the menu bar when this is off.</source>
        <translation>يخص نافذة البدء هذه فقط. وعند تعطيله يظل Orvella يعمل في الشريط.</translation>
    </message>
    <message>
        <source>Turning this off only hides this startup window. Orvella will still open in the menu bar and keep checking for ads.</source>
        <translation>تعطيل هذا الخيار يخفي نافذة البدء هذه فقط. وسيظل Orvella يُفتح في الشريط ويبحث عن الإعلانات.</translation>
    </message>
    <message>
        <source>Open dashboard</source>
        <translation>افتح لوحة المعلومات</translation>
    </message>
    <message>
        <source>Quit Orvella</source>
        <translation>أغلق Orvella</translation>
    </message>
    <message>
        <source>Got it</source>
        <translation>فهمت</translation>
    </message>
    <message>
        <source>Anonymous mode sends no app categories.</source>
        <translation>لا يرسل الوضع المجهول فئات التطبيقات.</translation>
    </message>
    <message>
        <source>We send broad categories like Developer tools or Design tools, never raw app names.</source>
        <translation>نرسل فئات عامة مثل «أدوات التطوير» أو «أدوات التصميم»، ولا نرسل أسماء التطبيقات أبدًا.</translation>
    </message>
</context>
<context>
    <name>orvella::MenuPopoverView</name>
    <message>
        <source>earned</source>
        <translation>الأرباح</translation>
    </message>
    <message>
        <source>Open ad</source>
        <translation>افتح الإعلان</translation>
    </message>
    <message>
        <source>Auto open ads</source>
        <translation>افتح الإعلانات تلقائيًا</translation>
    </message>
    <message>
        <source>Automatically opens the ad popup when an ad is ready. If off, click the green $ AD icon manually.</source>
        <translation>يفتح نافذة الإعلان تلقائيًا عندما يجهز إعلان. وعند تعطيله، انقر بنفسك على أيقونة ‎$ AD الخضراء.</translation>
    </message>
    <message>
        <source>Anonymous mode</source>
        <translation>الوضع المجهول</translation>
    </message>
    <message>
        <source>Sends no app-category signals. You can still earn, but ads are matched with less context.</source>
        <translation>لا يرسل إشارات فئات التطبيقات. يمكنك الاستمرار في الربح، لكن الإعلانات تُطابق بسياق أقل.</translation>
    </message>
    <message>
        <source>App category signals</source>
        <translation>إشارات فئات التطبيقات</translation>
    </message>
    <message>
        <source>I am 18 or older</source>
        <translation>عمري 18 عامًا أو أكثر</translation>
    </message>
    <message>
        <source>Required before category signals and paid ad viewing are enabled.</source>
        <translation>مطلوب قبل تفعيل إشارات الفئات ومشاهدة الإعلانات المدفوعة.</translation>
    </message>
    <message>
        <source>Advertisers never see your email, device id, raw app names, or open apps.</source>
        <translation>لا يرى المعلنون أبدًا بريدك الإلكتروني ولا معرّف جهازك ولا أسماء التطبيقات ولا التطبيقات المفتوحة.</translation>
    </message>
    <message>
        <source>Open at login</source>
        <translation>افتح عند الدخول</translation>
    </message>
    <message>
        <source>Starts Orvella automatically when you log in to your Mac.</source>
        <translation>يبدأ Orvella تلقائيًا عند دخولك إلى الحاسوب.</translation>
    </message>
    <message>
        <source>Show startup window</source>
        <translation>أظهر نافذة البدء</translation>
    </message>
    <message>
        <source>Controls the larger intro/settings window. Orvella still runs in the menu bar when this is off.</source>
        <translation>يخص نافذة التعريف والإعدادات الكبيرة. وعند تعطيله يظل Orvella يعمل في الشريط.</translation>
    </message>
    <message>
        <source>Check for Updates...</source>
        <translation>تحقق من التحديثات…</translation>
    </message>
    <message>
        <source>Checks Sparkle for the latest Orvella Mac update.</source>
        <translation>يتحقق من أحدث تحديث لتطبيق Orvella.</translation>
    </message>
    <message>
        <source>Link this Mac</source>
        <translation>اربط هذا الحاسوب</translation>
    </message>
    <message>
        <source>Linked</source>
        <translation>مرتبط</translation>
    </message>
    <message>
        <source>Link pending</source>
        <translation>الربط معلّق</translation>
    </message>
    <message>
        <source>Anonymous mode sends no app categories.</source>
        <translation>لا يرسل الوضع المجهول فئات التطبيقات.</translation>
    </message>
    <message>
        <source>Category signals send broad labels only.</source>
        <translation>ترسل إشارات الفئات تسميات عامة فقط.</translation>
    </message>
</context>
<context>
    <name>orvella::StatusBarController</name>
    <message>
        <source>Orvella · ad ready</source>
        <translation>Orvella · إعلان جاهز</translation>
    </message>
    <message>
        <source>Orvella · %1 available</source>
        <translation>Orvella · المتاح %1</translation>
    </message>
</context>
<context>
    <name>orvella::StatusMenu</name>
    <message>
        <source>Open ad</source>
        <translation>افتح الإعلان</translation>
    </message>
    <message>
        <source>Balances and settings</source>
        <translation>الأرصدة والإعدادات</translation>
    </message>
    <message>
        <source>About Orvella</source>
        <translation>حول Orvella</translation>
    </message>
    <message>
        <source>Quit Orvella</source>
        <translation>أغلق Orvella</translation>
    </message>
</context>
<context>
    <name>orvella::UpdateWindow</name>
    <message>
        <source>Progress</source>
        <translation>التقدم</translation>
    </message>
    <message>
        <source>Install</source>
        <translation>ثبّت</translation>
    </message>
    <message>
        <source>Install version %1</source>
        <translation>ثبّت الإصدار %1</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>ألغِ</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>أغلق</translation>
    </message>
</context>
</TS>
