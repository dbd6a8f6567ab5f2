// What is visible at each step of a dictation: observers and services must never see a later step's values.

#include "App/TalmoCoordinator.h"

#include "Support/Printing.h"
#include "Support/RecordingLog.h"
#include "Support/RecordingWorld.h"

#include <gmock/gmock.h>

namespace talmo::test {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

std::exception_ptr failure(const QString &text)
{
    return std::make_exception_ptr(Error(text));
}

/// Records its calls together with what the coordinator publishes at that moment.
class DictationOrderTest : public testing::Test {
protected:
    class LoggingSettings final : public SettingsService {
    public:
        explicit LoggingSettings(DictationOrderTest &test)
            : m_test(test)
        {
        }
        QStringList words{u"Talmo"_s};
        bool aiCleanupEnabled() const override
        {
            m_test.note("settings");
            return true;
        }
        bool conciseTextEnabled() const override { return false; }
        TextTone textTone() const override { return TextTone::Standard; }
        QStringList dictionaryWords() const override { return words; }

    private:
        DictationOrderTest &m_test;
    };

    class LoggingLocale final : public LocaleSource {
    public:
        explicit LoggingLocale(DictationOrderTest &test)
            : m_test(test)
        {
        }
        QString currentIdentifier() const override
        {
            m_test.note("locale");
            return m_test.world.locale;
        }

    private:
        DictationOrderTest &m_test;
    };

    class LoggingOverlay final : public OverlayService {
    public:
        explicit LoggingOverlay(DictationOrderTest &test)
            : m_test(test)
        {
        }
        void show() override { m_test.note("show"); }
        void hide() override { m_test.note("hide"); }

    private:
        DictationOrderTest &m_test;
    };

    class LoggingRecorder final : public RecorderService {
    public:
        explicit LoggingRecorder(DictationOrderTest &test)
            : m_test(test)
        {
        }
        void start(AudioBufferHandler) override {}
        void stop() override { m_test.note("recorder.stop"); }

    private:
        DictationOrderTest &m_test;
    };

    class LoggingClock final : public Clock {
    public:
        explicit LoggingClock(DictationOrderTest &test)
            : m_test(test)
        {
        }
        std::exception_ptr failure;
        Instant now() const override { return {}; }
        QFuture<void> sleep(Duration duration, std::stop_token) override
        {
            m_test.world.calls.push_back("sleep " + std::to_string(duration / 1ms));
            return failure ? makeFailedFuture<void>(failure) : Completion<void>::make()->future();
        }

    private:
        DictationOrderTest &m_test;
    };

    DictationOrderTest()
    {
        world.onModelStatus = [this] {
            note("status");
            return makeReadyFuture(ModelStatus{true, true});
        };
        world.onStart = [this] {
            note("start");
            return makeReadyFuture();
        };
        world.onStop = [this] {
            note("stop");
            return makeReadyFuture(u"hello"_s);
        };
        world.onCleanup = [this] {
            note("cleanup");
            return makeReadyFuture(u"Hello."_s);
        };
        world.onInsert = [this] {
            note("insert");
            return makeReadyFuture();
        };
    }

    /// What the coordinator currently publishes.
    std::string published() const
    {
        const auto &coordinator = *world.coordinator;
        return name(coordinator.state()).toStdString() + "|" + coordinator.liveTranscript().toStdString() + "|" +
               coordinator.lastError().value_or(u"-"_s).toStdString();
    }
    void note(const std::string &what) { trace.push_back(what + ": " + published()); }
    void noteAnnouncements()
    {
        QObject::connect(world.coordinator.get(), &Observable::objectWillChange, world.coordinator.get(),
                         [this] { note("change"); });
    }
    void begin()
    {
        world.coordinator->beginDictation();
        settle();
    }
    void end()
    {
        world.coordinator->endDictation();
        settle();
    }
    std::vector<std::string> takeTrace() { return std::exchange(trace, {}); }

    RecordingLog log;
    std::vector<std::string> trace;
    std::shared_ptr<LoggingSettings> settings = std::make_shared<LoggingSettings>(*this);
    std::shared_ptr<LoggingClock> clock = std::make_shared<LoggingClock>(*this);
    RecordingWorld world{[this](CoordinatorParts &parts) {
        parts.settings = settings;
        parts.locale = std::make_shared<LoggingLocale>(*this);
        parts.audioRecorder = std::make_shared<LoggingRecorder>(*this);
        parts.clock = clock;
        parts.makeOverlay = [this](TalmoCoordinator &) { return std::make_unique<LoggingOverlay>(*this); };
    }};
};

} // namespace

TEST_F(DictationOrderTest, eachStepSeesOnlyCurrentValues)
{
    begin();
    EXPECT_THAT(takeTrace(), ElementsAre("locale: idle||-", "status: idle||-", "start: idle||-", "show: recording||-"));
    world.onUpdate(u"hel"_s);
    end();
    EXPECT_THAT(takeTrace(),
                ElementsAre("show: processing|hel|-", "recorder.stop: processing|hel|-", "stop: processing|hel|-",
                            "settings: processing|hel|-", "cleanup: processing|hel|-", "show: inserting|Hello.|-",
                            "insert: inserting|Hello.|-", "hide: idle|Hello.|-"));
}

TEST_F(DictationOrderTest, announcesEachChangeBeforeStoringItInOrder)
{
    noteAnnouncements();
    begin();
    EXPECT_THAT(takeTrace(), ElementsAre("change: idle||-", "change: idle||-", "locale: idle||-", "status: idle||-",
                                         "start: idle||-", "change: idle||-", "show: recording||-"));
    world.onUpdate(u"hel"_s);
    EXPECT_THAT(takeTrace(), ElementsAre("change: recording||-"));
    end();
    EXPECT_THAT(takeTrace(),
                ElementsAre("change: recording|hel|-", "show: processing|hel|-", "recorder.stop: processing|hel|-",
                            "stop: processing|hel|-", "settings: processing|hel|-", "cleanup: processing|hel|-",
                            "change: processing|hel|-", "change: processing|Hello.|-", "show: inserting|Hello.|-",
                            "insert: inserting|Hello.|-", "change: inserting|Hello.|-", "hide: idle|Hello.|-"));
}

TEST_F(DictationOrderTest, clearsTranscriptThenErrorWithinOneCall)
{
    begin();
    world.onUpdate(u"old"_s);
    world.onError(failure(u"broke"_s));
    settle();
    takeTrace();
    noteAnnouncements();
    world.coordinator->beginDictation();
    EXPECT_THAT(takeTrace(), ElementsAre("change: error|old|broke", "change: error||broke"));
    EXPECT_EQ(published(), "error||-");
}

TEST_F(DictationOrderTest, publishesAndLogsErrorBeforeShowingOverlay)
{
    begin();
    takeTrace();
    noteAnnouncements();
    std::vector<std::size_t> linesAtChange;
    QObject::connect(world.coordinator.get(), &Observable::objectWillChange, world.coordinator.get(),
                     [&] { linesAtChange.push_back(log.lines().size()); });
    world.onError(failure(u"broke"_s));
    EXPECT_THAT(takeTrace(), ElementsAre("recorder.stop: recording||-", "change: recording||-", "change: error||-",
                                         "show: error||broke"));
    EXPECT_THAT(linesAtChange, ElementsAre(0U, 0U));
    EXPECT_THAT(log.lines(), ElementsAre(u"general debug: error: broke"_s));
    EXPECT_EQ(log.formats().front(), u"error: %s"_s);
}

TEST_F(DictationOrderTest, errorIsLoggedWhenOverlayAppears)
{
    std::size_t linesAtShow = 0;
    class Overlay final : public OverlayService {
    public:
        explicit Overlay(std::function<void()> onShow)
            : m_onShow(std::move(onShow))
        {
        }
        void show() override { m_onShow(); }
        void hide() override {}

    private:
        std::function<void()> m_onShow;
    };
    RecordingWorld other([&](CoordinatorParts &parts) {
        parts.makeOverlay = [&](TalmoCoordinator &) {
            return std::make_unique<Overlay>([&] { linesAtShow = log.lines().size(); });
        };
    });
    other.permissions->microphone = SimpleStatus::Denied;
    other.coordinator->beginDictation();
    EXPECT_EQ(linesAtShow, 1U);
    other.clock->advance(3s);
}

TEST_F(DictationOrderTest, failureCancelsTranscriptionBeforeStartingTimer)
{
    begin();
    world.takeCalls();
    world.onError(failure(u"broke"_s));
    EXPECT_THAT(world.takeCalls(), IsEmpty()) << "neither may delay the call that reported the failure";
    settle();
    EXPECT_THAT(world.takeCalls(), ElementsAre("cancelTranscription", "sleep 3000"));
}

TEST_F(DictationOrderTest, cancelledErrorTimerHidesOverlay)
{
    clock->failure = std::make_exception_ptr(Cancelled());
    world.permissions->speech = SimpleStatus::Denied;
    begin();
    ASSERT_EQ(trace.size(), 2U);
    EXPECT_THAT(trace.front(), testing::StartsWith("show: error"));
    EXPECT_THAT(trace.back(), testing::StartsWith("hide: error"));
}

TEST_F(DictationOrderTest, logsEachTranscriptBeforeTheNextStep)
{
    begin();
    std::vector<std::size_t> linesAtChange;
    QObject::connect(world.coordinator.get(), &Observable::objectWillChange, world.coordinator.get(),
                     [&] { linesAtChange.push_back(log.lines().size()); });
    world.onCleanup = [this] {
        EXPECT_THAT(log.lines(), ElementsAre(u"general debug: raw transcript: hello"_s));
        return makeReadyFuture(u"Hello."_s);
    };
    end();
    EXPECT_THAT(linesAtChange, ElementsAre(0U, 2U, 2U, 2U)); // Processing, transcript, inserting, idle.
    EXPECT_THAT(log.formats(), ElementsAre(u"raw transcript: %s"_s, u"cleaned transcript: %s"_s));
}

TEST_F(DictationOrderTest, readsSettingsOnceAfterTranscription)
{
    const auto gate = Completion<QString>::make();
    world.onStop = [gate] { return gate->future(); };
    begin();
    end();
    settings->words = QStringList{u"Late"_s};
    gate->finish(u"hello"_s);
    settle();
    EXPECT_THAT(world.takeCalls(), testing::Contains("cleanup \"hello\" ai full 0 Late"));
    EXPECT_EQ(std::count(trace.begin(), trace.end(), "settings: processing||-"), 1);
}

TEST_F(DictationOrderTest, dictationKeepsItsInitialLocale)
{
    const auto gate = Completion<void>::make();
    world.onModelStatus = [] { return makeReadyFuture(ModelStatus{true, false}); };
    world.onInstall = [gate] { return gate->future(); };
    begin();
    world.locale = u"de_DE"_s;
    gate->finish();
    settle();
    EXPECT_THAT(world.takeCalls(), ElementsAre("modelStatus en_US", "installModel en_US", "startTranscription en_US"));
    end();
    world.takeCalls();
    begin();
    EXPECT_EQ(world.takeCalls().front(), "modelStatus de_DE");
}

TEST_F(DictationOrderTest, readsLocaleWhenSequenceRunsNotOnPress)
{
    world.coordinator->beginDictation();
    EXPECT_THAT(trace, IsEmpty());
    world.locale = u"fr_FR"_s;
    settle();
    EXPECT_THAT(world.takeCalls(), ElementsAre("modelStatus fr_FR", "startTranscription fr_FR"));
}

TEST_F(DictationOrderTest, singleMissingPermissionIsRefused)
{
    for (const auto status : {SimpleStatus::NotDetermined, SimpleStatus::Denied}) {
        world.permissions->microphone = status;
        begin();
        EXPECT_TRUE(world.coordinator->state().is(TalmoState::Case::Error));
        EXPECT_THAT(world.takeCalls(), testing::Not(testing::Contains(testing::StartsWith("modelStatus"))));
    }
    world.permissions->microphone = SimpleStatus::Granted;
    begin();
    EXPECT_EQ(world.coordinator->state(), TalmoState::recording());
}

TEST(DictationEnd, coordinatorCanBeDestroyedDuringAnyWait)
{
    for (int wait = 0; wait < 7; ++wait) {
        const auto gate = Completion<void>::make();
        const auto status = Completion<ModelStatus>::make();
        const auto text = Completion<QString>::make();
        RecordingWorld world;
        world.onModelStatus = [&] {
            return wait == 1 ? status->future() : makeReadyFuture(ModelStatus{true, wait != 2});
        };
        world.onInstall = [&] { return wait == 2 ? gate->future() : makeReadyFuture(); };
        world.onStart = [&] { return wait == 3 ? gate->future() : makeReadyFuture(); };
        world.onStop = [&] { return wait == 4 ? text->future() : makeReadyFuture(u"hello"_s); };
        world.onCleanup = [&] { return wait == 5 ? text->future() : makeReadyFuture(u"Hello."_s); };
        world.onInsert = [&] { return wait == 6 ? gate->future() : makeReadyFuture(); };
        world.coordinator->beginDictation();
        if (wait > 0) {
            settle();
        }
        world.coordinator->endDictation();
        if (wait > 3) {
            settle();
        }
        world.takeCalls();
        world.coordinator.reset();
        gate->finish();
        status->finish(ModelStatus{true, true});
        text->finish(u"late"_s);
        settle();
        EXPECT_THAT(world.takeCalls(), IsEmpty()) << wait;
    }
}

TEST(DictationEnd, coordinatorCanBeDestroyedWithQueuedTask)
{
    RecordingWorld world;
    world.coordinator->beginDictation();
    settle();
    world.coordinator->endDictation();
    world.coordinator.reset();
    world.takeCalls();
    settle();
    EXPECT_THAT(world.takeCalls(), IsEmpty());
}

TEST(TalmoCoordinatorShared, isRebuiltAfterRelease)
{
    int built = 0;
    RecordingWorld worlds[2];
    TalmoCoordinator::setSharedFactory([&] { return std::move(worlds[built++].coordinator); });
    TalmoCoordinator::shared();
    TalmoCoordinator::releaseShared();
    TalmoCoordinator::shared();
    EXPECT_EQ(built, 2);
    TalmoCoordinator::releaseShared();
    TalmoCoordinator::setSharedFactory({});
}

} // namespace talmo::test
