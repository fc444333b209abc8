<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="fa">
<context>
    <name>Files</name>
    <message>
        <source>New score</source>
        <translation>پارتیتور تازه</translation>
    </message>
    <message>
        <source>Can&apos;t find the file </source>
        <translation>پرونده پیدا نشد: </translation>
    </message>
    <message>
        <source>Can&apos;t read </source>
        <translation>خوانده نشد: </translation>
    </message>
    <message>
        <source>Recording: </source>
        <translation>ضبط: </translation>
    </message>
    <message>
        <source>Export MusicXML</source>
        <translation>صدور MusicXML</translation>
    </message>
    <message>
        <source>Wrote %1</source>
        <translation>%1 نوشته شد</translation>
    </message>
    <message>
        <source>Export MIDI (microtonal)</source>
        <translation>صدور MIDI (ریزپرده‌ای)</translation>
    </message>
    <message>
        <source>Export MIDI</source>
        <translation>صدور MIDI</translation>
    </message>
    <message>
        <source>Import MIDI</source>
        <translation>ورود MIDI</translation>
    </message>
    <message>
        <source>Imported %1 notes into %2</source>
        <translation>%1 نت به %2 وارد شد</translation>
    </message>
</context>
<context>
    <name>Fingering</name>
    <message>
        <source>Tar</source>
        <translation>تار</translation>
    </message>
    <message>
        <source>Ney</source>
        <translation>نی</translation>
    </message>
    <message>
        <source>Harmonica</source>
        <translation>سازدهنی</translation>
    </message>
    <message>
        <source>Hang drum</source>
        <translation>هنگ‌درام</translation>
    </message>
    <message>
        <source>Fingering</source>
        <translation>انگشت‌گذاری</translation>
    </message>
    <message>
        <source>Cursor</source>
        <translation>مکان‌نما</translation>
    </message>
    <message>
        <source>Playing</source>
        <translation>در حال نواختن</translation>
    </message>
    <message>
        <source>no note</source>
        <translation>بی‌نت</translation>
    </message>
    <message>
        <source>no table</source>
        <translation>جدولی نیست</translation>
    </message>
    <message>
        <source>cannot be played here; nearest: </source>
        <translation>اینجا نواختنی نیست؛ نزدیک‌ترین: </translation>
    </message>
</context>
<context>
    <name>Help</name>
    <message>
        <source>(its own action)</source>
        <translation>(کار خودش)</translation>
    </message>
    <message>
        <source>&lt;h3&gt;Tahrir&lt;/h3&gt;&lt;p&gt;A score editor and player for Persian art music.&lt;/p&gt;&lt;p&gt;&lt;b&gt;Music font:&lt;/b&gt; Bravura, by Steinberg Media Technologies, under the SIL Open Font License 1.1 (data/fonts/Bravura-OFL.txt).&lt;/p&gt;&lt;p&gt;&lt;b&gt;Sound fonts&lt;/b&gt; (used when installed): FluidR3_GM by Frank Wen, under the MIT licence (Debian package fluid-soundfont-gm); TimGM6mb by Tim Brechbill, under the GNU GPL version 2 or later (Debian package timgm6mb-soundfont).&lt;/p&gt;&lt;p&gt;&lt;b&gt;Text fonts&lt;/b&gt; are the system&apos;s own, each under its own licence.&lt;/p&gt;</source>
        <translation>&lt;h3&gt;تحریر&lt;/h3&gt;&lt;p&gt;ویرایشگر و نوازندهٔ پارتیتور برای موسیقی دستگاهی ایرانی.&lt;/p&gt;&lt;p&gt;&lt;b&gt;قلم موسیقی:&lt;/b&gt; Bravura، از Steinberg Media Technologies، با پروانهٔ SIL Open Font License 1.1 (data/fonts/Bravura-OFL.txt).&lt;/p&gt;&lt;p&gt;&lt;b&gt;فونت‌های صوتی&lt;/b&gt; (هرگاه نصب باشند): FluidR3_GM از Frank Wen، با پروانهٔ MIT (بستهٔ دبیان fluid-soundfont-gm)؛ TimGM6mb از Tim Brechbill، با پروانهٔ GNU GPL نسخهٔ ۲ یا بالاتر (بستهٔ دبیان timgm6mb-soundfont).&lt;/p&gt;&lt;p&gt;&lt;b&gt;قلم‌های متن&lt;/b&gt; از آنِ خود سیستم‌اند، هر یک با پروانهٔ خود.&lt;/p&gt;</translation>
    </message>
    <message>
        <source>Keys and palette</source>
        <translation>کلیدها و پالت</translation>
    </message>
    <message>
        <source>Key</source>
        <translation>کلید</translation>
    </message>
    <message>
        <source>What it does</source>
        <translation>کاری که می‌کند</translation>
    </message>
    <message>
        <source>Keyboard</source>
        <translation>صفحه‌کلید</translation>
    </message>
    <message>
        <source>Entry</source>
        <translation>خانه</translation>
    </message>
    <message>
        <source>Group</source>
        <translation>گروه</translation>
    </message>
    <message>
        <source>Palette</source>
        <translation>پالت</translation>
    </message>
    <message>
        <source>About</source>
        <translation>درباره</translation>
    </message>
</context>
<context>
    <name>Menu</name>
    <message>
        <source>&amp;File</source>
        <translation>پرونده</translation>
    </message>
    <message>
        <source>&amp;New...</source>
        <translation>تازه...</translation>
    </message>
    <message>
        <source>&amp;Open...</source>
        <translation>باز کردن...</translation>
    </message>
    <message>
        <source>&amp;Save...</source>
        <translation>ذخیره...</translation>
    </message>
    <message>
        <source>&amp;Import MIDI...</source>
        <translation>ورود MIDI...</translation>
    </message>
    <message>
        <source>&amp;Export</source>
        <translation>صدور</translation>
    </message>
    <message>
        <source>&amp;MIDI (plain)...</source>
        <translation>MIDI (ساده)...</translation>
    </message>
    <message>
        <source>MIDI (&amp;microtonal, keeps quarter tones)...</source>
        <translation>MIDI (ریزپرده‌ای، با ربع‌پرده‌ها)...</translation>
    </message>
    <message>
        <source>Music&amp;XML...</source>
        <translation>MusicXML...</translation>
    </message>
    <message>
        <source>&amp;Transcribe a recording...</source>
        <translation>نت‌نویسی از یک ضبط...</translation>
    </message>
    <message>
        <source>E&amp;xit</source>
        <translation>خروج</translation>
    </message>
    <message>
        <source>&amp;Insert</source>
        <translation>درج</translation>
    </message>
    <message>
        <source>&amp;Key signature (dastgah)...</source>
        <translation>سرکلید (دستگاه)...</translation>
    </message>
    <message>
        <source>&amp;Text line	Shift+F5</source>
        <translation>سطر متن	Shift+F5</translation>
    </message>
    <message>
        <source>&amp;Lyric under the note	Shift+F6</source>
        <translation>شعر زیر نت	Shift+F6</translation>
    </message>
    <message>
        <source>&amp;View</source>
        <translation>نما</translation>
    </message>
    <message>
        <source>&amp;Page view</source>
        <translation>نمای صفحه</translation>
    </message>
    <message>
        <source>&amp;Working view</source>
        <translation>نمای کار</translation>
    </message>
    <message>
        <source>&amp;Reference image...</source>
        <translation>تصویر مرجع...</translation>
    </message>
    <message>
        <source>Print &amp;frame...</source>
        <translation>قاب چاپ...</translation>
    </message>
    <message>
        <source>&amp;Print...</source>
        <translation>چاپ...</translation>
    </message>
    <message>
        <source>Print pre&amp;view...</source>
        <translation>پیش‌نمایش چاپ...</translation>
    </message>
    <message>
        <source>Size %1</source>
        <translation>اندازهٔ %1</translation>
    </message>
    <message>
        <source>&amp;Language</source>
        <translation>زبان</translation>
    </message>
    <message>
        <source>&amp;Recent files</source>
        <translation>پرونده‌های اخیر</translation>
    </message>
    <message>
        <source>Save &amp;As...</source>
        <translation>ذخیره با نام...</translation>
    </message>
    <message>
        <source>(none)</source>
        <translation>(هیچ)</translation>
    </message>
    <message>
        <source>Save As</source>
        <translation>ذخیره با نام</translation>
    </message>
    <message>
        <source>&amp;Edit</source>
        <translation>ویرایش</translation>
    </message>
    <message>
        <source>&amp;Undo	Ctrl+Z</source>
        <translation>واگرد	Ctrl+Z</translation>
    </message>
    <message>
        <source>&amp;Redo	Ctrl+Y</source>
        <translation>ازنو	Ctrl+Y</translation>
    </message>
    <message>
        <source>Cu&amp;t	Ctrl+X</source>
        <translation>برش	Ctrl+X</translation>
    </message>
    <message>
        <source>&amp;Copy	Ctrl+C</source>
        <translation>رونوشت	Ctrl+C</translation>
    </message>
    <message>
        <source>&amp;Paste	Ctrl+V</source>
        <translation>چسباندن	Ctrl+V</translation>
    </message>
    <message>
        <source>Select &amp;all	Ctrl+A</source>
        <translation>گزینش همه	Ctrl+A</translation>
    </message>
    <message>
        <source>Clear the selection	Esc</source>
        <translation>برداشتن گزینش	Esc</translation>
    </message>
    <message>
        <source>&amp;Store the note	Enter</source>
        <translation>ثبت نت	Enter</translation>
    </message>
    <message>
        <source>&amp;Editor on or off	Ctrl+E</source>
        <translation>روشن یا خاموش کردن ویرایشگر	Ctrl+E</translation>
    </message>
    <message>
        <source>&amp;Help</source>
        <translation>راهنما</translation>
    </message>
    <message>
        <source>&amp;Keys and palette...</source>
        <translation>کلیدها و پالت...</translation>
    </message>
    <message>
        <source>&amp;About Tahrir...</source>
        <translation>دربارهٔ تحریر...</translation>
    </message>
</context>
<context>
    <name>MidiImport</name>
    <message>
        <source>(no name)</source>
        <translation>(بی‌نام)</translation>
    </message>
    <message>
        <source>Track %1: %2 (%3 notes)</source>
        <translation>شیار %1: %2 (%3 نت)</translation>
    </message>
    <message>
        <source>Import MIDI</source>
        <translation>ورود MIDI</translation>
    </message>
    <message>
        <source>Tracks of the file:</source>
        <translation>شیارهای پرونده:</translation>
    </message>
    <message>
        <source>What the file holds:</source>
        <translation>محتوای پرونده:</translation>
    </message>
</context>
<context>
    <name>OpenPreview</name>
    <message>
        <source>The description of the selected score shows here.</source>
        <translation>توضیحات پارتیتور گزیده اینجا نشان داده می‌شود.</translation>
    </message>
</context>
<context>
    <name>Palette</name>
    <message>
        <source>Do</source>
        <translation>دو</translation>
    </message>
    <message>
        <source>Re</source>
        <translation>ر</translation>
    </message>
    <message>
        <source>Mi</source>
        <translation>می</translation>
    </message>
    <message>
        <source>Fa</source>
        <translation>فا</translation>
    </message>
    <message>
        <source>Sol</source>
        <translation>سل</translation>
    </message>
    <message>
        <source>La</source>
        <translation>لا</translation>
    </message>
    <message>
        <source>Si</source>
        <translation>سی</translation>
    </message>
    <message>
        <source>Cut</source>
        <translation>برش</translation>
    </message>
    <message>
        <source>Copy</source>
        <translation>کپی</translation>
    </message>
    <message>
        <source>Paste</source>
        <translation>الصاق</translation>
    </message>
    <message>
        <source>Undo</source>
        <translation>واگرد</translation>
    </message>
    <message>
        <source>Redo</source>
        <translation>ازنو</translation>
    </message>
    <message>
        <source>Durations</source>
        <translation>کشش‌ها</translation>
    </message>
    <message>
        <source>Accidentals</source>
        <translation>علامت‌های عرضی</translation>
    </message>
    <message>
        <source>Repeats and directives</source>
        <translation>تکرارها و دستورها</translation>
    </message>
    <message>
        <source>Ornaments</source>
        <translation>تزئینات</translation>
    </message>
    <message>
        <source>Tuplets</source>
        <translation>چندتایی‌ها</translation>
    </message>
    <message>
        <source>Fingering and plectrum</source>
        <translation>انگشت‌گذاری و مضراب</translation>
    </message>
    <message>
        <source>Rhythm and tempo</source>
        <translation>ریتم و سرعت</translation>
    </message>
    <message>
        <source>Commands</source>
        <translation>فرمان‌ها</translation>
    </message>
    <message>
        <source>Clipboard</source>
        <translation>بریده‌دان</translation>
    </message>
</context>
<context>
    <name>Playback</name>
    <message>
        <source> Playing on with the built-in synthesiser.</source>
        <translation> پخش با ترکیب‌گر داخلی ادامه می‌یابد.</translation>
    </message>
    <message>
        <source> Playing on without sound.</source>
        <translation> پخش بی‌صدا ادامه می‌یابد.</translation>
    </message>
    <message>
        <source>▶ Play</source>
        <translation>▶ پخش</translation>
    </message>
    <message>
        <source>‖ Pause</source>
        <translation>‖ مکث</translation>
    </message>
    <message>
        <source>■ Stop</source>
        <translation>■ توقف</translation>
    </message>
    <message>
        <source>Tempo</source>
        <translation>سرعت</translation>
    </message>
    <message>
        <source>Loud</source>
        <translation>بلند</translation>
    </message>
    <message>
        <source>Loudest</source>
        <translation>بلندترین</translation>
    </message>
    <message>
        <source>Mute</source>
        <translation>بی‌صدا</translation>
    </message>
    <message>
        <source>Silent</source>
        <translation>خاموش</translation>
    </message>
    <message>
        <source>Volume</source>
        <translation>بلندی صدا</translation>
    </message>
    <message>
        <source>Koron</source>
        <translation>کرن</translation>
    </message>
    <message>
        <source>Sori</source>
        <translation>سری</translation>
    </message>
    <message>
        <source>Transpose</source>
        <translation>انتقال</translation>
    </message>
    <message>
        <source>Count-in</source>
        <translation>ضرب آغاز</translation>
    </message>
    <message>
        <source>Loop</source>
        <translation>تکرار پیاپی</translation>
    </message>
    <message>
        <source>Pedal</source>
        <translation>پدال</translation>
    </message>
    <message>
        <source>Tar</source>
        <translation>تار</translation>
    </message>
    <message>
        <source>Tar samples (a double click leaves the tar alone, without MIDI)</source>
        <translation>نمونه‌های تار (دو کلیک، تار را تنها و بی MIDI می‌گذارد)</translation>
    </message>
    <message>
        <source>Daf</source>
        <translation>دف</translation>
    </message>
    <message>
        <source>Daf samples</source>
        <translation>نمونه‌های دف</translation>
    </message>
    <message>
        <source>Acc.</source>
        <translation>همراهی</translation>
    </message>
    <message>
        <source>The score&apos;s recorded accompaniment at this tempo</source>
        <translation>همراهی ضبط‌شدهٔ پارتیتور در این سرعت</translation>
    </message>
    <message>
        <source>Sung notes</source>
        <translation>نت‌های آوازی</translation>
    </message>
    <message>
        <source>Sing the name of the note under the cursor</source>
        <translation>نام نت زیر مکان‌نما را بخوان</translation>
    </message>
</context>
<context>
    <name>Print</name>
    <message>
        <source>no score is open</source>
        <translation>هیچ پارتیتوری باز نیست</translation>
    </message>
    <message>
        <source>cannot write </source>
        <translation>نوشته نشد: </translation>
    </message>
    <message>
        <source>Print</source>
        <translation>چاپ</translation>
    </message>
    <message>
        <source>Apply</source>
        <translation>اعمال</translation>
    </message>
    <message>
        <source>Print...</source>
        <translation>چاپ...</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>بستن</translation>
    </message>
    <message>
        <source>Letter</source>
        <translation>Letter</translation>
    </message>
    <message>
        <source>Paper</source>
        <translation>کاغذ</translation>
    </message>
    <message>
        <source>Left margin</source>
        <translation>حاشیهٔ چپ</translation>
    </message>
    <message>
        <source>Right margin</source>
        <translation>حاشیهٔ راست</translation>
    </message>
    <message>
        <source>Top margin</source>
        <translation>حاشیهٔ بالا</translation>
    </message>
    <message>
        <source>Bottom margin</source>
        <translation>حاشیهٔ پایین</translation>
    </message>
    <message>
        <source>Staff gap</source>
        <translation>فاصلهٔ حامل‌ها</translation>
    </message>
    <message>
        <source>Size</source>
        <translation>اندازه</translation>
    </message>
    <message>
        <source>Page %1 of %2</source>
        <translation>صفحهٔ %1 از %2</translation>
    </message>
    <message>
        <source>Export</source>
        <translation>صدور</translation>
    </message>
    <message>
        <source>Print preview</source>
        <translation>پیش‌نمایش چاپ</translation>
    </message>
</context>
<context>
    <name>Recovery</name>
    <message>
        <source>Tahrir did not end normally last time.
Restore the last edit of %1 ?</source>
        <translation>تحریر دفعهٔ پیش درست بسته نشد.
آخرین ویرایش %1 بازگردانده شود؟</translation>
    </message>
</context>
<context>
    <name>Scales</name>
    <message>
        <source>Key signature</source>
        <translation>سرکلید</translation>
    </message>
    <message>
        <source>Dastgah and its key signature:</source>
        <translation>دستگاه و سرکلید آن:</translation>
    </message>
    <message>
        <source>Standard tuning</source>
        <translation>کوک استاندارد</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>تأیید</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>انصراف</translation>
    </message>
</context>
<context>
    <name>TextTools</name>
    <message>
        <source>Font...</source>
        <translation>قلم...</translation>
    </message>
    <message>
        <source>Apply</source>
        <translation>اعمال</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>تأیید</translation>
    </message>
</context>
<context>
    <name>Transcription</name>
    <message>
        <source>Transcription</source>
        <translation>نت‌نویسی</translation>
    </message>
    <message>
        <source>Open...</source>
        <translation>باز کردن...</translation>
    </message>
    <message>
        <source>Open a recording</source>
        <translation>باز کردن یک ضبط</translation>
    </message>
    <message>
        <source>Recordings (*.wav *.flac *.ogg *.mp3);;All files (*)</source>
        <translation>ضبط‌ها (*.wav *.flac *.ogg *.mp3);;همهٔ پرونده‌ها (*)</translation>
    </message>
    <message>
        <source>Zoom in</source>
        <translation>بزرگ‌تر</translation>
    </message>
    <message>
        <source>Zoom out</source>
        <translation>کوچک‌تر</translation>
    </message>
    <message>
        <source>Marked stretch only</source>
        <translation>فقط بخش نشان‌شده</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>انصراف</translation>
    </message>
    <message>
        <source>Tracker</source>
        <translation>ردیاب</translation>
    </message>
    <message>
        <source>Classic (three passes)</source>
        <translation>کلاسیک (سه گذر)</translation>
    </message>
    <message>
        <source>Modern (pitch track)</source>
        <translation>نو (ردیابی زیروبمی)</translation>
    </message>
    <message>
        <source>Grid</source>
        <translation>شبکه</translation>
    </message>
    <message>
        <source>La %1 Hz</source>
        <translation>لا %1 هرتز</translation>
    </message>
    <message>
        <source>Passes</source>
        <translation>گذرها</translation>
    </message>
    <message>
        <source>Exact notes</source>
        <translation>نت‌های دقیق</translation>
    </message>
    <message>
        <source>Start at the first note</source>
        <translation>آغاز از نخستین نت</translation>
    </message>
    <message>
        <source>Raw notes (no cleaning)</source>
        <translation>نت‌های خام (بی پاک‌سازی)</translation>
    </message>
    <message>
        <source>Method</source>
        <translation>روش</translation>
    </message>
    <message>
        <source>Cut-off</source>
        <translation>آستانه</translation>
    </message>
    <message>
        <source>Period over</source>
        <translation>دوره بیش از</translation>
    </message>
    <message>
        <source>Smallest note</source>
        <translation>کوچک‌ترین نت</translation>
    </message>
    <message>
        <source>Dastgah</source>
        <translation>دستگاه</translation>
    </message>
    <message>
        <source>Notes</source>
        <translation>نت‌ها</translation>
    </message>
    <message>
        <source>Transcribe</source>
        <translation>نت‌نویسی کن</translation>
    </message>
    <message>
        <source>Tempo to sheet</source>
        <translation>سرعت به برگه</translation>
    </message>
    <message>
        <source>Octave</source>
        <translation>اکتاو</translation>
    </message>
    <message>
        <source>Reading %1...</source>
        <translation>خواندن %1...</translation>
    </message>
    <message>
        <source>%1 s at %2 Hz: finding the pitch...</source>
        <translation>%1 ثانیه با %2 هرتز: یافتن زیروبمی...</translation>
    </message>
    <message>
        <source>The pitch was not tracked: stopped</source>
        <translation>زیروبمی ردیابی نشد: متوقف شد</translation>
    </message>
    <message>
        <source>%1 s at %2 Hz</source>
        <translation>%1 ثانیه با %2 هرتز</translation>
    </message>
    <message>
        <source>%1 notes found</source>
        <translation>%1 نت یافت شد</translation>
    </message>
    <message>
        <source>%1 lines inserted</source>
        <translation>%1 سطر درج شد</translation>
    </message>
    <message>
        <source>No microphone or other sound input was found on this computer</source>
        <translation>هیچ میکروفون یا ورودی صدای دیگری روی این رایانه پیدا نشد</translation>
    </message>
    <message>
        <source>Play</source>
        <translation>پخش صدا</translation>
    </message>
    <message>
        <source>Play notes</source>
        <translation>پخش نت‌ها</translation>
    </message>
    <message>
        <source>Stop</source>
        <translation>توقف</translation>
    </message>
    <message>
        <source>Record</source>
        <translation>ضبط</translation>
    </message>
    <message>
        <source>Record from the microphone into Tmp.Wav</source>
        <translation>ضبط از میکروفون در Tmp.Wav</translation>
    </message>
    <message>
        <source>Input</source>
        <translation>ورودی</translation>
    </message>
    <message>
        <source>Recording...</source>
        <translation>در حال ضبط...</translation>
    </message>
    <message>
        <source>Can&apos;t write %1</source>
        <translation>نمی‌توان %1 را نوشت</translation>
    </message>
    <message>
        <source>The sound input could not be started</source>
        <translation>ورودی صدا آغاز نشد</translation>
    </message>
    <message>
        <source>Orange: the note heard at the position; blue frame: the note found there;
green dots: the degrees of the dastgah. Click a key to hear it.</source>
        <translation>نارنجی: نتی که در این جا شنیده می‌شود؛ قاب آبی: نتی که این جا یافته شد؛
نقطه‌های سبز: درجه‌های دستگاه. برای شنیدن هر کلید روی آن کلیک کنید.</translation>
    </message>
    <message>
        <source>ErrorNote %1: 1000 is exactly on the note</source>
        <translation>ErrorNote %1: عدد 1000 یعنی درست روی نت</translation>
    </message>
    <message>
        <source>Note at the position</source>
        <translation>نت در این جا</translation>
    </message>
</context>
<context>
    <name>Window</name>
    <message>
        <source>Editor</source>
        <translation>ویرایشگر</translation>
    </message>
    <message>
        <source>Zoom</source>
        <translation>اندازهٔ نما</translation>
    </message>
    <message>
        <source>Palette</source>
        <translation>پالت</translation>
    </message>
    <message>
        <source>Playback</source>
        <translation>پخش</translation>
    </message>
    <message>
        <source>Description</source>
        <translation>توضیحات</translation>
    </message>
    <message>
        <source>From</source>
        <translation>از</translation>
    </message>
    <message>
        <source>To</source>
        <translation>تا</translation>
    </message>
    <message>
        <source>Zoom of the picture</source>
        <translation>بزرگ‌نمایی تصویر</translation>
    </message>
    <message>
        <source>Enter stores the note</source>
        <translation>با Enter نت ثبت می‌شود</translation>
    </message>
    <message>
        <source>The note in the pen is not stored yet. Store it first ?</source>
        <translation>نت قلم هنوز ثبت نشده است. نخست ثبت شود؟</translation>
    </message>
    <message>
        <source>No sound output: %1. Install a General MIDI sound font (Debian package fluid-soundfont-gm) or start a MIDI synthesiser, then start Tahrir again.</source>
        <translation>خروجی صدا نیست: %1. یک فونت صوتی General MIDI نصب کنید (بستهٔ دبیان fluid-soundfont-gm) یا یک ترکیب‌گر MIDI را راه بیندازید، سپس تحریر را دوباره باز کنید.</translation>
    </message>
    <message>
        <source>Reference image</source>
        <translation>تصویر مرجع</translation>
    </message>
    <message>
        <source>Can&apos;t read the picture </source>
        <translation>تصویر خوانده نشد: </translation>
    </message>
</context>
</TS>
