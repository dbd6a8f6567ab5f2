// The Linux catalogue changes only the texts that name another platform's places and products.

#include "UI/Style/Wording.h"

#include "Platform/Linux/System/LinuxWording.h"
#include "Recognition/Models/ModelInstaller.h"
#include "Support/Printing.h"
#include "Support/TranslatedDesktop.h"
#include "UI/Menu/MenuContents.h"

#include <gmock/gmock.h>

#include <QCoreApplication>
#include <QFile>
#include <QLocale>
#include <QStringList>
#include <QTranslator>
#include <QXmlStreamReader>

#include <cstdio>
#include <cstdlib>
#include <map>

namespace talmo::test {

namespace {

/// All source texts of the catalogues, in order.
QStringList catalogueSources()
{
    QFile file(QStringLiteral(TALMO_SOURCE "/src/Platform/Linux/System/Wording/talmo_en.ts"));
    EXPECT_TRUE(file.open(QFile::ReadOnly));
    QXmlStreamReader reader(&file);
    QStringList sources;
    while (!reader.atEnd()) {
        if (reader.readNext() == QXmlStreamReader::StartElement && reader.name() == u"source"_s) {
            sources.append(reader.readElementText());
        }
    }
    EXPECT_FALSE(reader.hasError());
    return sources;
}

/// What a new process with these variables calls an idle Talmo, on standard error.
void sayThatTalmoIsReady(const std::map<const char *, const char *> &environment)
{
    for (const char *variable : {"LC_ALL", "LC_MESSAGES", "LC_NUMERIC", "LANGUAGE", "LANG"}) {
        qunsetenv(variable);
    }
    for (const auto &[variable, value] : environment) {
        qputenv(variable, value);
    }
    installWording();
    std::fprintf(stderr, "%s\n", qUtf8Printable(Wording::text("Talmo is ready")));
    std::_Exit(0);
}

const std::map<QString, QString> &reworded()
{
    static const std::map<QString, QString> texts{
        {u"This Mac doesn't support Apple Intelligence."_s,
         u"The language model is turned off in Talmo's settings file."_s},
        {u"Apple Intelligence isn't turned on. Enable it in System Settings > Apple Intelligence & Siri to use AI cleanup."_s,
         u"No language model is running on this computer. Start one, such as llama.cpp's server or Ollama, to use AI cleanup."_s},
        {u"Talmo needs Accessibility access (System Settings > Privacy & Security > Accessibility) to insert text into other apps."_s,
         u"Talmo needs an X server with the XTEST and XInput 2.2 extensions to insert text into other apps."_s},
        {u"On-device speech recognition isn't available on this Mac."_s,
         u"On-device speech recognition isn't available on this computer."_s},
        {u"Hold fn to record and release to insert, or double-tap fn for hands-free recording (press fn again to stop). Works even when Talmo isn't the frontmost app. Requires \"Press 🌐 key to: Do Nothing\" in System Settings > Keyboard, so macOS's own Globe-key action doesn't also fire. Not yet configurable in this MVP."_s,
         u"Hold %1 to record and release to insert, or double-tap %1 for hands-free recording (press %1 again to stop). Works even when Talmo isn't the frontmost app. You can choose other keys below."_s},
        {u"Uses Apple's on-device Foundation Models to remove filler words and fix punctuation. When off, only basic local formatting is applied."_s,
         u"Uses a language-model server on this computer to remove filler words and fix punctuation. When off, only basic local formatting is applied."_s},
        {u"⌘,"_s, u"Ctrl+,"_s},
        {u"Accessibility"_s, u"Typing into other windows"_s},
        {u"Accessibility access needed"_s, u"Talmo cannot type into other windows"_s},
        {u"Audio and transcripts are processed locally on this Mac."_s,
         u"Audio and transcripts are processed locally on this computer."_s},
        {u"Talmo has no backend, no account, and no network functionality. Recording, transcription, and text cleanup all run using Apple's on-device Speech and Foundation Models frameworks. Nothing you say or type is sent anywhere."_s,
         u"Talmo has no backend and no account. Recording and transcription run on this computer. With AI cleanup on, the text is sent to a language-model server on this computer, if one is running, and nowhere else. Talmo itself uses the internet only for the one-time download of a speech model."_s},
    };
    return texts;
}

} // namespace

TEST(Wording, withoutCatalogueTextsAreUnchanged)
{
    EXPECT_EQ(Wording::text(u"⌘,"_s), u"⌘,"_s);
    EXPECT_EQ(Wording::textWithKey("Hold %1, or double-tap for hands-free", u"fn"_s),
              u"Hold fn, or double-tap for hands-free"_s);
}

TEST(Wording, errorsAreTranslatedAroundShortcutsAndNames)
{
    /// Says everything that it knows backwards.
    class Backwards final : public QTranslator {
    public:
        QString translate(const char *, const char *source, const char *, int) const override
        {
            const QString text = QString::fromUtf8(source);
            return text == u"Paste with %1."_s   ? u"%1 tiw etsaP."_s
                   : text == u"Is “%1” muted?"_s ? u"?detum “%1” sI"_s
                   : text == u"Broken: "_s       ? u"nekorB: "_s
                                                 : QString();
        }
        bool isEmpty() const override { return false; }
    };
    Backwards translator;
    QCoreApplication::installTranslator(&translator);
    EXPECT_EQ(Wording::errorText(u"Paste with Ctrl+V."_s), u"Ctrl+V tiw etsaP."_s);
    EXPECT_EQ(Wording::errorText(u"Paste with Ctrl+Shift+V."_s), u"Ctrl+Shift+V tiw etsaP."_s);
    EXPECT_EQ(Wording::errorText(u"Broken: Paste with Ctrl+V."_s), u"nekorB: Ctrl+V tiw etsaP."_s);
    EXPECT_EQ(Wording::errorText(u"Broken: No such device"_s), u"nekorB: No such device"_s);
    EXPECT_EQ(Wording::errorText(u"Is “Built-in: Audio” muted?"_s), u"?detum “Built-in: Audio” sI"_s);
    EXPECT_EQ(Wording::errorText(u"Unknown"_s), u"Unknown"_s);
    QCoreApplication::removeTranslator(&translator);
}

TEST(Wording, linuxCatalogueChangesExactlyTheseTexts)
{
    installWording();
    const QStringList sources = catalogueSources();
    ASSERT_GT(sources.size(), 60);
    std::map<QString, QString> touched;
    for (const auto &source : sources) {
        const QString text = Wording::text(source);
        if (text != source) {
            touched[source] = text;
        }
        for (const auto &foreign : {u"Mac"_s, u"Apple"_s, u"System Settings"_s, u"⌘"_s, u"🌐"_s, u"fn "_s, u"Siri"_s}) {
            EXPECT_FALSE(text.contains(foreign)) << text.toStdString();
        }
    }
    EXPECT_EQ(touched, reworded());
}

TEST(Wording, everyTextIsThereInEveryLanguage)
{
    const std::map<QString, QString> ready{{u"de_DE"_s, u"Talmo ist bereit"_s},
                                           {u"de_AT"_s, u"Talmo ist bereit"_s},
                                           {u"fr_FR"_s, u"Talmo est prêt"_s},
                                           {u"es_MX"_s, u"Talmo está listo"_s}};
    const QStringList sameInEveryLanguage{u"Talmo"_s,   u"Standard"_s, u"General"_s, u"Installation"_s, u"Microphone"_s,
                                          u"Details"_s, u"AltGr"_s,    u"Fn"_s,      u"Ctrl+V"_s,       u"Menu"_s};
    for (const auto &[locale, text] : ready) {
        const TranslatedDesktop desktop(locale);
        EXPECT_EQ(Wording::text("Talmo is ready"), text);
        for (const auto &source : catalogueSources()) {
            EXPECT_TRUE(Wording::text(source) != source || sameInEveryLanguage.contains(source))
                << locale.toStdString() << ": " << source.toStdString();
        }
    }
}

TEST(Wording, germanDesktopIsSpokenToInGerman)
{
    const TranslatedDesktop desktop(u"de_DE"_s);
    const auto contents =
        MenuContents::make(TalmoState::idle(), SimpleStatus::Granted, SimpleStatus::Granted, true, u"Right Ctrl"_s);
    EXPECT_EQ(contents.title, u"Talmo ist bereit"_s);
    EXPECT_EQ(contents.subtitle, u"Strg rechts halten, oder für freihändig zweimal drücken"_s);
    EXPECT_EQ(
        Wording::errorText(
            u"No window has keyboard focus. The text is on the clipboard: paste it with Ctrl+Shift+V."_s),
        u"Kein Fenster hat den Tastaturfokus. Der Text ist in der Zwischenablage: mit Strg+Umschalt+V einfügen."_s);
}

TEST(Wording, progressOfDownloadIsTranslatedWhole)
{
    const TranslatedDesktop desktop(u"de_DE"_s);
    const ModelProgress progress{ModelProgress::Phase::Downloading, 60'000'000, 120'000'000, 3'000'000};
    EXPECT_EQ(progress.description([](const char *source) { return Wording::text(source); }),
              u"Wird heruntergeladen: 60 von 120 MB, 3.0 MB/s, noch 20 s"_s);
}

TEST(Wording, languageWithoutCatalogueIsSpokenToInEnglish)
{
    const TranslatedDesktop desktop(u"sv_SE"_s);
    EXPECT_EQ(Wording::text("Talmo is ready"), u"Talmo is ready"_s);
    EXPECT_EQ(Wording::text("⌘,"), u"Ctrl+,"_s);
}

TEST(WordingDeathTest, followsTheLanguageOfMessages)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    const auto said = [](const std::map<const char *, const char *> &environment) { sayThatTalmoIsReady(environment); };
    using testing::ExitedWithCode;
    EXPECT_EXIT(said({{"LANG", "de_DE.UTF-8"}}), ExitedWithCode(0), "Talmo ist bereit");
    EXPECT_EXIT(said({{"LANG", "en_GB.UTF-8"}, {"LC_MESSAGES", "fr_FR.UTF-8"}}), ExitedWithCode(0), "Talmo est prêt");
    EXPECT_EXIT(said({{"LANG", "en_US.UTF-8"}, {"LC_NUMERIC", "de_DE.UTF-8"}}), ExitedWithCode(0), "Talmo is ready");
    EXPECT_EXIT(said({{"LANG", "es_ES.UTF-8"}, {"LC_NUMERIC", "en_US.UTF-8"}}), ExitedWithCode(0), "Talmo está listo");
    EXPECT_EXIT(said({{"LANG", "en_US.UTF-8"}, {"LANGUAGE", "de:en"}}), ExitedWithCode(0), "Talmo ist bereit");
    EXPECT_EXIT(said({{"LC_ALL", "C.UTF-8"}, {"LANG", "de_DE.UTF-8"}}), ExitedWithCode(0), "Talmo is ready");
}

TEST(Wording, keyNameReplacesFnInCaption)
{
    installWording();
    const auto caption = std::find_if(reworded().begin(), reworded().end(),
                                      [](const auto &text) { return text.first.startsWith(u"Hold fn"_s); });
    const QString text = Wording::textWithKey(caption->first.toUtf8().constData(), u"Right Ctrl"_s);
    EXPECT_TRUE(text.startsWith(u"Hold Right Ctrl to record"_s));
    EXPECT_TRUE(text.contains(u"press Right Ctrl again"_s));
    EXPECT_FALSE(text.contains(u"%1"_s));
}

TEST(Wording, translatesOwnErrorsAndKeepsForeignOnes)
{
    installWording();
    EXPECT_EQ(Wording::errorText(u"On-device speech recognition isn't available on this Mac."_s),
              u"On-device speech recognition isn't available on this computer."_s);
    EXPECT_EQ(Wording::errorText(u"Couldn't start audio capture: Mac: no"_s),
              u"Couldn't start audio capture: Mac: no"_s);
    EXPECT_EQ(Wording::errorText(u"what: ever"_s), u"what: ever"_s);
    const auto contents =
        MenuContents::make(TalmoState::error(u"On-device speech recognition isn't available on this Mac."_s),
                           SimpleStatus::Granted, SimpleStatus::Granted, true, {});
    EXPECT_EQ(contents.title, u"On-device speech recognition isn't available on this computer."_s);
}

/// The catalogue lists the source's texts; scripts/translations updates it.
TEST(Wording, catalogueContainsAllViewTexts)
{
    const QStringList sources = catalogueSources();
    for (const auto &text : {u"Talmo is ready"_s, u"Start Recording"_s, u"Open Settings…"_s, u"No speech detected."_s,
                             u"Nothing to insert."_s, u"Talmo Settings"_s, u"Couldn't start audio capture: "_s}) {
        EXPECT_TRUE(sources.contains(text)) << text.toStdString();
    }
}

} // namespace talmo::test
