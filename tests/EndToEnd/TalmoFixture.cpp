#include "EndToEnd/TalmoFixture.h"

#include "SpokenText.h"
#include "Support/Printing.h"

namespace talmo::test {

TalmoFixture::TalmoFixture()
    : sound(std::make_unique<testbed::SoundServer>(desktop.folder() + u"/sound"_s, environment))
{
    environment.insert(u"QT_LOGGING_RULES"_s, u"talmo.general.debug=true"_s);
}

TalmoFixture::~TalmoFixture()
{
    if (HasFailure() && talmo) {
        ADD_FAILURE() << "Talmo's log:\n" << talmo->output().toStdString();
    }
}

void TalmoFixture::startTalmo()
{
    startTalmoThrough(QStringLiteral(TALMO_BIN "/talmo"), {});
}

void TalmoFixture::startTalmoAfter(const QString &shellCommands)
{
    startTalmoThrough(u"sh"_s, {u"-ec"_s, shellCommands + u"\nexec " TALMO_BIN "/talmo"_s});
}

void TalmoFixture::startTalmoThrough(const QString &program, const QStringList &arguments)
{
    talmo = std::make_unique<testbed::ChildProcess>(program, arguments, environment);
    m_talmoLines = 0;
    ASSERT_TRUE(talmoSays(u"ready:"_s));
}

void TalmoFixture::openWindow(const QString &program, const QStringList &arguments)
{
    window = std::make_unique<testbed::ChildProcess>(program, arguments, environment);
    ASSERT_TRUE(desktop.waitForActiveWindow(u"Target"_s, timeout));
}

void TalmoFixture::openQtWindow(const QString &delay)
{
    openWindow(QStringLiteral(TALMO_BIN "/talmo-demo-window"), {u"Target"_s, delay});
}

bool TalmoFixture::talmoSays(const QString &text)
{
    const bool found = talmo->waitForLine(text, timeout, m_talmoLines).has_value();
    while (found && !talmo->lines()[m_talmoLines].text.contains(text)) {
        ++m_talmoLines;
    }
    ++m_talmoLines;
    return found;
}

bool TalmoFixture::windowShows(const QString &text)
{
    return window->waitForLine(u"text: "_s + text, timeout).has_value();
}

void TalmoFixture::speak(const QString &text)
{
    sound->play(testbed::speak(text, desktop.folder()));
}

void TalmoFixture::dictate(const QString &text)
{
    keyboard.press(key);
    ASSERT_TRUE(talmoSays(u"state: recording"_s));
    speak(text);
    keyboard.release(key);
}

void TalmoFixture::doubleTap()
{
    constexpr testbed::Timeout step = std::chrono::milliseconds(40);
    keyboard.press(key);
    testbed::sleepFor(step);
    keyboard.release(key);
    testbed::sleepFor(step);
    keyboard.press(key);
    testbed::sleepFor(step);
    keyboard.release(key);
}

QByteArray TalmoFixture::clipboard(const QString &target)
{
    return selection(u"clipboard"_s, target);
}

QByteArray TalmoFixture::selection(const QString &name, const QString &target)
{
    QProcess process;
    process.setProcessEnvironment(environment);
    process.start(u"xclip"_s, {u"-selection"_s, name, u"-o"_s, u"-t"_s, target});
    EXPECT_TRUE(testbed::waitUntil([&process] { return process.state() == QProcess::NotRunning; }, timeout));
    return process.exitCode() == 0 ? process.readAllStandardOutput() : QByteArray();
}

bool TalmoFixture::isClipboardEmpty()
{
    return clipboard(u"TARGETS"_s).isEmpty();
}

void TalmoFixture::copy(const QString &text, const QString &selectionName)
{
    // In the foreground, so that it ends with the test.
    auto copier = std::make_unique<testbed::ChildProcess>(
        u"xclip"_s, QStringList{u"-selection"_s, selectionName, u"-quiet"_s, u"-i"_s}, environment);
    copier->writeLine(text);
    copier->closeInput();
    m_copiers.push_back(std::move(copier));
    ASSERT_TRUE(testbed::pollUntil([&] { return selection(selectionName) == text.toUtf8() + '\n'; }, timeout));
}

int TalmoFixture::quitTalmo()
{
    return talmo->terminate();
}

} // namespace talmo::test
