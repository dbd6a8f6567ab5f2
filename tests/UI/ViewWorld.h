#pragma once

#include "App/ApplicationShell.h"
#include "Base/Error.h"
#include "Support/FakeEventMonitor.h"
#include "Support/FakeLoginItem.h"
#include "Support/FakePermissions.h"
#include "Support/MemoryUserDefaults.h"
#include "Support/Printing.h"
#include "Support/RecordingWorld.h"
#include "Support/TestLoop.h"
#include "UI/Menu/FrontmostFocus.h"
#include "UI/Menu/StatusItem.h"
#include "UI/Overlay/PanelWindow.h"
#include "UI/Overlay/ScreenSource.h"
#include "UI/ViewContext.h"

#include <QWidget>

#include <utility>

namespace talmo::test {

/// A coordinator that can be put into any state, with real settings and permissions.
class ViewWorld {
public:
    ViewWorld()
        : world([this](CoordinatorParts &parts) {
              parts.settings = settings;
              parts.permissions = permissions;
          })
    {
    }

    /// Lets pending timers expire, such as the one that hides an error.
    ~ViewWorld()
    {
        if (world.coordinator) {
            world.clock->advance(std::chrono::seconds(5));
        }
    }
    ViewWorld(const ViewWorld &) = delete;
    ViewWorld &operator=(const ViewWorld &) = delete;

    ViewContext context()
    {
        return {world.coordinator.get(),
                settings,
                permissions,
                [this] { return unavailability; },
                [this] {
                    ++availabilityRefreshes;
                    return makeReadyFuture();
                },
                [this] { return server; },
                recogniser,
                passwordFields,
                recovery,
                options,
                nullptr,
                pronunciations,
                pause,
                microphone,
                hotkeys,
                language,
                desktopExtension,
                limits,
                [this] { coordinator().beginDictation(); },
                [this] { coordinator().endDictation(); },
                canOpenSettings};
    }

    TalmoCoordinator &coordinator() { return *world.coordinator; }

    void beIdle()
    {
        if (coordinator().state().is(TalmoState::Case::Idle)) {
            return;
        }
        beInserting();
        inserted->finish();
        settle();
    }
    void beRecording()
    {
        coordinator().beginDictation();
        settle();
    }
    void hear(const QString &text)
    {
        world.onUpdate(text);
        settle();
    }
    void beProcessing()
    {
        stopped = Completion<QString>::make();
        world.onStop = [this] { return stopped->future(); };
        beRecording();
        coordinator().endDictation();
        settle();
    }
    void beInserting()
    {
        inserted = Completion<void>::make();
        world.onInsert = [this] { return inserted->future(); };
        beProcessing();
        stopped->finish(QStringLiteral("hello world"));
        settle();
    }
    void fail(const QString &message)
    {
        world.onStart = [message] { return makeFailedFuture<void>(std::make_exception_ptr(Error(message))); };
        coordinator().beginDictation();
        settle();
        world.onStart = [] { return makeReadyFuture(); };
    }
    void setPermissions(bool hasMicrophone, bool speech, bool accessibility)
    {
        constexpr int authorised = 3;
        authorization->microphone = hasMicrophone ? authorised : 0;
        authorization->speech = speech ? authorised : 1;
        trust->trusted = accessibility;
        permissions->refresh();
        settle();
    }

    std::shared_ptr<MemoryUserDefaults> defaults = std::make_shared<MemoryUserDefaults>();
    std::shared_ptr<FakeLoginItem> loginItem = std::make_shared<FakeLoginItem>();
    std::shared_ptr<TalmoSettings> settings = std::make_shared<TalmoSettings>(defaults, loginItem);
    std::shared_ptr<FakeAuthorization> authorization = std::make_shared<FakeAuthorization>();
    std::shared_ptr<FakeInputTrust> trust = std::make_shared<FakeInputTrust>();
    std::shared_ptr<FakePaneOpener> panes = std::make_shared<FakePaneOpener>();
    std::shared_ptr<PermissionsManager> permissions = std::make_shared<PermissionsManager>(authorization, trust, panes);
    std::optional<QString> unavailability;
    int availabilityRefreshes = 0;
    std::shared_ptr<Completion<QString>> stopped;
    std::shared_ptr<Completion<void>> inserted;
    EditingServer server;
    std::shared_ptr<RecogniserSettings> recogniser;
    std::shared_ptr<PasswordFieldSettings> passwordFields;
    std::shared_ptr<DictationOptions> options;
    std::shared_ptr<WordPronunciations> pronunciations;
    std::shared_ptr<DictationRecovery> recovery;
    std::shared_ptr<DictationPause> pause;
    std::shared_ptr<MicrophoneSettings> microphone;
    std::shared_ptr<HotkeySettings> hotkeys;
    std::shared_ptr<LanguageSettings> language;
    std::shared_ptr<DesktopExtension> desktopExtension;
    QStringList limits;
    std::function<bool(SettingsPane)> canOpenSettings;
    RecordingWorld world;
};

class FakeScreens final : public ScreenSource {
public:
    QList<Screen> all{{QRect(0, 0, 1000, 800), QRect(0, 0, 1000, 800)}};
    std::optional<Screen> main = all.first();
    QPoint pointer{500, 400};

    QList<Screen> screens() const override { return all; }
    std::optional<Screen> mainScreen() const override { return main; }
    QPoint mouseLocation() const override { return pointer; }
};

/// A fake panel: only its content is shown.
class FakePanelWindow final : public PanelWindow {
public:
    FakePanelWindow(std::vector<std::string> &calls, const PanelOptions &panelOptions, QWidget *panelContent)
        : options(panelOptions),
          content(panelContent),
          m_calls(calls)
    {
    }
    ~FakePanelWindow() override { delete content; }

    PanelOptions options;
    QWidget *content;
    std::vector<QRect> frames;

    void setFrame(const QRect &frame) override
    {
        frames.push_back(frame);
        content->resize(frame.size());
    }
    QRect frame() const override { return frames.empty() ? options.contentRect : frames.back(); }
    void orderFrontRegardless() override
    {
        m_calls.emplace_back("orderFrontRegardless");
        m_isVisible = true;
        content->show();
    }
    void orderOut() override
    {
        m_calls.emplace_back("orderOut");
        m_isVisible = false;
        content->hide();
    }
    bool isVisible() const override { return m_isVisible; }
    /// Closes it as a click elsewhere or Escape does.
    void dismiss() { m_isVisible = false; }

private:
    std::vector<std::string> &m_calls;
    bool m_isVisible = false;
};

/// Creates panels and remembers the last one.
struct FakePanels {
    std::vector<std::string> calls;
    FakePanelWindow *last = nullptr;
    int made = 0;

    PanelWindowFactory factory()
    {
        return [this](const PanelOptions &options, QWidget *content) {
            auto panel = std::make_unique<FakePanelWindow>(calls, options, content);
            last = panel.get();
            ++made;
            return panel;
        };
    }
};

class FakeFocus final : public FrontmostFocus {
public:
    explicit FakeFocus(std::vector<std::string> &calls)
        : m_calls(calls)
    {
    }
    std::shared_ptr<Completion<void>> back = Completion<void>::make();

    void remember() override { m_calls.emplace_back("remember focus"); }
    QFuture<void> returned() override
    {
        m_calls.emplace_back("wait for focus");
        return back->future();
    }

private:
    std::vector<std::string> &m_calls;
};

class FakeStatusItem final : public StatusItem {
public:
    std::vector<QString> symbols;
    std::vector<MenuContents> menus;
    std::function<void(std::optional<QRect>)> onActivated;
    std::function<void(MenuAction)> onChosen;
    int menuCloses = 0;
    bool isInPanel = true;

    void setSymbol(const QString &symbol) override { symbols.push_back(symbol); }
    void setMenu(const MenuContents &contents) override { menus.push_back(contents); }
    void setOnActivated(std::function<void(std::optional<QRect>)> callback) override
    {
        onActivated = std::move(callback);
    }
    void setOnChosen(std::function<void(MenuAction)> callback) override { onChosen = std::move(callback); }
    bool isShown() const override { return isInPanel; }
    void closeMenu() override { ++menuCloses; }
};

class FakeShell final : public ApplicationShell {
public:
    std::vector<std::string> calls;

    void setActivationPolicy(ActivationPolicy policy) override
    {
        calls.emplace_back(policy == ActivationPolicy::Accessory ? "accessory" : "regular");
    }
    void activateIgnoringOtherApps() override { calls.emplace_back("activate"); }
    void terminate() override { calls.emplace_back("terminate"); }
};

} // namespace talmo::test
