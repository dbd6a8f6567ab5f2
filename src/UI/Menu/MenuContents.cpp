#include "UI/Menu/MenuContents.h"

#include "UI/Style/Wording.h"
#include "UI/ViewContext.h"

#include <QTextDocument>

#include <utility>

namespace talmo {

namespace {

/// In characters: a plain menu is as wide as its longest entry.
constexpr qsizetype longestPlainTitle = 60;

MenuEntry startRow()
{
    return {QStringLiteral("mic.fill"),
            Wording::text(QT_TRANSLATE_NOOP("Talmo", "Start Recording")),
            {},
            MenuAction::BeginDictation};
}

QStringList missingPermissions(SimpleStatus microphone, SimpleStatus speechRecognition, bool isAccessibilityGranted)
{
    QStringList warnings;
    if (microphone != SimpleStatus::Granted) {
        warnings.append(Wording::text(QT_TRANSLATE_NOOP("Talmo", "Microphone access needed")));
    }
    if (speechRecognition != SimpleStatus::Granted) {
        warnings.append(Wording::text(QT_TRANSLATE_NOOP("Talmo", "Speech recognition access needed")));
    }
    if (!isAccessibilityGranted) {
        warnings.append(Wording::text(QT_TRANSLATE_NOOP("Talmo", "Accessibility access needed")));
    }
    return warnings;
}

QList<MenuEntry> recoveryRows(const DictationRecovery &recovery)
{
    QList<MenuEntry> rows = {{{},
                              Wording::text(QT_TRANSLATE_NOOP("Talmo", "Copy Last Dictation")),
                              {},
                              recovery.lastText() ? MenuAction::CopyLastDictation : MenuAction::None}};
    if (recovery.holdsEarlierClipboard()) {
        rows.append({{},
                     Wording::text(QT_TRANSLATE_NOOP("Talmo", "Restore Earlier Clipboard")),
                     {},
                     MenuAction::PutEarlierClipboardBack});
    }
    return rows;
}

bool isAtRest(const TalmoState &state)
{
    return state.is(TalmoState::Case::Idle) || state.is(TalmoState::Case::Error);
}

void describePause(MenuContents &contents, const TalmoState &state, bool isPaused)
{
    if (!isPaused) {
        contents.pause = {{}, Wording::text(QT_TRANSLATE_NOOP("Talmo", "Pause Talmo")), {}, MenuAction::Pause};
        return;
    }
    contents.pause = {
        QStringLiteral("play.fill"), Wording::text(QT_TRANSLATE_NOOP("Talmo", "Resume Talmo")), {}, MenuAction::Resume};
    if (isAtRest(state)) {
        contents.title = Wording::text(QT_TRANSLATE_NOOP("Talmo", "Talmo is paused"));
        contents.subtitle = Wording::text(QT_TRANSLATE_NOOP("Talmo", "The key does nothing until you resume"));
    }
}

/// A press shows the settings, where the installation can be followed and cancelled.
void describeOffer(MenuContents &contents, const RecogniserSettings &recogniser)
{
    if (const auto installation = recogniser.installation()) {
        contents.offer = {QStringLiteral("ellipsis.circle"),
                          Wording::text(QT_TRANSLATE_NOOP("Talmo", "Installing a recogniser…")),
                          {},
                          MenuAction::ShowRecogniser};
        contents.offerDetail = installation->description;
    } else if (const auto offer = recogniser.offer()) {
        contents.offer = {QStringLiteral("sparkles"),
                          Wording::text(QT_TRANSLATE_NOOP("Talmo", "Get better recognition")), offer->size,
                          MenuAction::GetBetterRecognition};
        contents.offerDetail = offer->detail;
    }
}

/// Fills in the title, the subtitle and the main row.
void describeState(MenuContents &contents, const TalmoState &state, const QString &hotkeyDisplayName)
{
    contents.mainRow = startRow();
    switch (state.which()) {
    case TalmoState::Case::Idle:
        if (!contents.warnings.isEmpty()) {
            contents.title = Wording::text(QT_TRANSLATE_NOOP("Talmo", "Talmo needs permissions"));
            return;
        }
        contents.title = Wording::text(QT_TRANSLATE_NOOP("Talmo", "Talmo is ready"));
        contents.subtitle = Wording::textWithKey(QT_TRANSLATE_NOOP("Talmo", "Hold %1, or double-tap for hands-free"),
                                                 hotkeyDisplayName);
        return;
    case TalmoState::Case::Recording:
        contents.title = Wording::text(QT_TRANSLATE_NOOP("Talmo", "Listening…"));
        contents.mainRow = {QStringLiteral("stop.fill"),
                            Wording::text(QT_TRANSLATE_NOOP("Talmo", "Stop Recording")),
                            {},
                            MenuAction::EndDictation};
        return;
    case TalmoState::Case::Processing:
        contents.title = Wording::text(QT_TRANSLATE_NOOP("Talmo", "Cleaning up…"));
        contents.mainRow = {QStringLiteral("sparkles"), contents.title, {}, MenuAction::None};
        return;
    case TalmoState::Case::Inserting:
        contents.title = Wording::text(QT_TRANSLATE_NOOP("Talmo", "Inserting…"));
        contents.mainRow = {QStringLiteral("text.cursor"), contents.title, {}, MenuAction::None};
        return;
    case TalmoState::Case::Error:
        contents.title = Wording::errorText(state.message());
        contents.subtitle = Wording::text(QT_TRANSLATE_NOOP("Talmo", "Something went wrong"));
        if (contents.title.size() > longestPlainTitle) {
            contents.details = {{}, Wording::text(QT_TRANSLATE_NOOP("Talmo", "Details")), {}, MenuAction::ShowDetails};
        }
        return;
    }
}

} // namespace

MenuContents MenuContents::make(const TalmoState &state, SimpleStatus microphone, SimpleStatus speechRecognition,
                                bool isAccessibilityGranted, const QString &hotkeyDisplayName)
{
    MenuContents contents;
    contents.warnings = missingPermissions(microphone, speechRecognition, isAccessibilityGranted);
    describeState(contents, state, hotkeyDisplayName);
    contents.grant = {
        {}, Wording::text(QT_TRANSLATE_NOOP("Talmo", "Grant Permissions…")), {}, MenuAction::GrantPermissions};
    contents.settings = {QStringLiteral("gearshape"), Wording::text(QT_TRANSLATE_NOOP("Talmo", "Settings")),
                         Wording::text(QT_TRANSLATE_NOOP("Talmo", "⌘,")), MenuAction::OpenSettings};
    contents.quit = {
        QStringLiteral("power"), Wording::text(QT_TRANSLATE_NOOP("Talmo", "Quit Talmo")), {}, MenuAction::Quit};
    return contents;
}

MenuContents MenuContents::make(const ViewContext &context)
{
    auto contents = make(context.coordinator->state(), context.permissions->microphoneStatus(),
                         context.permissions->speechRecognitionStatus(), context.permissions->accessibilityGranted(),
                         context.settings->hotkeyDisplayName());
    if (context.recogniser) {
        describeOffer(contents, *context.recogniser);
    }
    if (context.recovery) {
        contents.recovery = recoveryRows(*context.recovery);
    }
    if (context.pause) {
        describePause(contents, context.coordinator->state(), context.pause->isPaused());
    }
    return contents;
}

QString MenuContents::briefTitle() const
{
    return title.size() <= longestPlainTitle ? title : title.left(longestPlainTitle - 1).trimmed() + u'…';
}

QString MenuContents::toolTip() const
{
    return Qt::mightBeRichText(title) ? title.toHtmlEscaped() : title;
}

QString menuBarSymbol(const TalmoState &state, bool isPaused)
{
    if (isPaused && isAtRest(state)) {
        return QStringLiteral("pause.circle");
    }
    switch (state.which()) {
    case TalmoState::Case::Recording:
        return QStringLiteral("waveform.circle.fill");
    case TalmoState::Case::Processing:
    case TalmoState::Case::Inserting:
        return QStringLiteral("ellipsis.circle");
    case TalmoState::Case::Error:
        return QStringLiteral("exclamationmark.circle");
    case TalmoState::Case::Idle:
        break;
    }
    return QStringLiteral("mic.circle");
}

} // namespace talmo
