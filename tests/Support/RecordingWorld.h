#pragma once

#include "App/TalmoCoordinator.h"
#include "Base/Completion.h"
#include "Base/Task.h"
#include "Support/ManualClock.h"
#include "Support/TestLoop.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace talmo::test {

/// A coordinator whose services record every call in order. Their answers can be set; by default everything succeeds.
/// The coordinator and the fakes run on the test's thread, in virtual time.
class RecordingWorld {
public:
    using Calls = std::vector<std::string>;

    Calls calls;
    QString transcript = QStringLiteral("hello world");
    QString cleaned = QStringLiteral("Hello world.");
    QString locale = QStringLiteral("en_US");
    std::function<QFuture<ModelStatus>()> onModelStatus = [] { return makeReadyFuture(ModelStatus{true, true}); };
    std::function<QFuture<void>()> onInstall = [] { return makeReadyFuture(); };
    std::function<QFuture<void>()> onStart = [] { return makeReadyFuture(); };
    std::function<QFuture<QString>()> onStop = [this] { return makeReadyFuture(QString(transcript)); };
    std::function<QFuture<void>()> onInsert = [] { return makeReadyFuture(); };
    std::function<QFuture<QString>()> onCleanup = [this] { return makeReadyFuture(QString(cleaned)); };
    TranscriptionService::UpdateHandler onUpdate;
    TranscriptionService::ErrorHandler onError;

    class Settings final : public SettingsService {
    public:
        bool ai = true;
        bool concise = false;
        TextTone tone = TextTone::Standard;
        QStringList words{QStringLiteral("Talmo")};
        bool aiCleanupEnabled() const override { return ai; }
        bool conciseTextEnabled() const override { return concise; }
        TextTone textTone() const override { return tone; }
        QStringList dictionaryWords() const override { return words; }
    };

    class Permissions final : public PermissionsService {
    public:
        explicit Permissions(Calls &calls)
            : m_calls(calls)
        {
        }
        SimpleStatus microphone = SimpleStatus::Granted;
        SimpleStatus speech = SimpleStatus::Granted;
        bool answer = true;
        SimpleStatus microphoneStatus() const override { return microphone; }
        SimpleStatus speechRecognitionStatus() const override { return speech; }
        QCoro::Task<bool> requestMicrophonePermission() override
        {
            m_calls.emplace_back("requestMicrophonePermission");
            return await<bool>(makeReadyFuture(bool(answer)));
        }
        QCoro::Task<bool> requestSpeechRecognitionPermission() override
        {
            m_calls.emplace_back("requestSpeechRecognitionPermission");
            return await<bool>(makeReadyFuture(bool(answer)));
        }
        void requestAccessibility() override { m_calls.emplace_back("requestAccessibility"); }

    private:
        Calls &m_calls;
    };

    /// `adjust` may replace parts before the coordinator is created.
    explicit RecordingWorld(const std::function<void(CoordinatorParts &)> &adjust = {})
        : settings(std::make_shared<Settings>()),
          permissions(std::make_shared<Permissions>(calls)),
          clock(std::make_shared<ManualClock>())
    {
        CoordinatorParts parts;
        parts.permissions = permissions;
        parts.settings = settings;
        parts.audioRecorder = std::make_shared<Recorder>(calls);
        parts.transcriptionService = std::make_shared<Transcription>(*this);
        hotkeys = std::make_shared<Hotkeys>(calls);
        parts.hotkeyManager = hotkeys;
        parts.textCleanupService = std::make_shared<Cleanup>(*this);
        parts.insertionService = std::make_shared<Insertion>(*this);
        parts.locale = std::make_shared<Locale>(*this);
        parts.clock = clock;
        parts.mainExecutor = SerialExecutor::onCurrentThread();
        parts.makeOverlay = [this](TalmoCoordinator &) {
            calls.emplace_back("makeOverlay");
            return std::make_unique<Overlay>(calls);
        };
        if (adjust) {
            adjust(parts);
        }
        coordinator = std::make_unique<TalmoCoordinator>(std::move(parts));
    }
    /// Lets everything still waiting end while what it uses exists.
    ~RecordingWorld() { clock->advance(std::chrono::minutes(1)); }
    RecordingWorld(const RecordingWorld &) = delete;
    RecordingWorld &operator=(const RecordingWorld &) = delete;

    /// The calls since the previous takeCalls().
    Calls takeCalls() { return std::exchange(calls, {}); }

    class Hotkeys final : public HotkeyService {
    public:
        explicit Hotkeys(Calls &calls)
            : m_calls(calls)
        {
        }
        std::function<void()> down;
        std::function<void()> up;
        void setOnHotkeyDown(std::function<void()> callback) override { down = std::move(callback); }
        void setOnHotkeyUp(std::function<void()> callback) override { up = std::move(callback); }
        void start() override { m_calls.push_back(down && up ? "hotkeys.start" : "hotkeys.start without callbacks"); }

    private:
        Calls &m_calls;
    };

    std::shared_ptr<Settings> settings;
    std::shared_ptr<Permissions> permissions;
    std::shared_ptr<Hotkeys> hotkeys;
    std::shared_ptr<ManualClock> clock;
    std::unique_ptr<TalmoCoordinator> coordinator;

private:
    class Recorder final : public RecorderService {
    public:
        explicit Recorder(Calls &calls)
            : m_calls(calls)
        {
        }
        void start(AudioBufferHandler) override { m_calls.emplace_back("recorder.start"); }
        void stop() override { m_calls.emplace_back("recorder.stop"); }

    private:
        Calls &m_calls;
    };

    class Transcription final : public TranscriptionService {
    public:
        explicit Transcription(RecordingWorld &world)
            : m_world(world)
        {
        }
        QCoro::Task<ModelStatus> modelStatus(QString language) override
        {
            m_world.calls.push_back("modelStatus " + language.toStdString());
            return await<ModelStatus>(m_world.onModelStatus());
        }
        QCoro::Task<void> installModel(QString language) override
        {
            m_world.calls.push_back("installModel " + language.toStdString());
            return await<void>(m_world.onInstall());
        }
        QCoro::Task<void> startTranscription(std::shared_ptr<RecorderService>, QString language, UpdateHandler update,
                                             ErrorHandler error) override
        {
            m_world.calls.push_back("startTranscription " + language.toStdString());
            m_world.onUpdate = std::move(update);
            m_world.onError = std::move(error);
            return await<void>(m_world.onStart());
        }
        QCoro::Task<QString> stopTranscription() override
        {
            m_world.calls.emplace_back("stopTranscription");
            return await<QString>(m_world.onStop());
        }
        QCoro::Task<void> cancelTranscription() override
        {
            m_world.calls.emplace_back("cancelTranscription");
            return await<void>(makeReadyFuture());
        }

    private:
        RecordingWorld &m_world;
    };

    class Cleanup final : public CleanupService {
    public:
        explicit Cleanup(RecordingWorld &world)
            : m_world(world)
        {
        }
        QCoro::Task<QString> cleanup(QString raw, bool ai, bool concise, TextTone tone, QStringList words) override
        {
            m_world.calls.push_back("cleanup \"" + raw.toStdString() + "\" " + (ai ? "ai" : "local") +
                                    (concise ? " concise " : " full ") + std::to_string(static_cast<int>(tone)) + " " +
                                    words.join(QLatin1Char(',')).toStdString());
            return await<QString>(m_world.onCleanup());
        }

    private:
        RecordingWorld &m_world;
    };

    class Insertion final : public TextInsertionService {
    public:
        explicit Insertion(RecordingWorld &world)
            : m_world(world)
        {
        }
        QCoro::Task<void> insert(QString text) override
        {
            m_world.calls.push_back("insert \"" + text.toStdString() + "\"");
            return await<void>(m_world.onInsert());
        }

    private:
        RecordingWorld &m_world;
    };

    class Locale final : public LocaleSource {
    public:
        explicit Locale(RecordingWorld &world)
            : m_world(world)
        {
        }
        QString currentIdentifier() const override { return m_world.locale; }

    private:
        RecordingWorld &m_world;
    };

    class Overlay final : public OverlayService {
    public:
        explicit Overlay(Calls &calls)
            : m_calls(calls)
        {
        }
        void show() override { m_calls.emplace_back("overlay.show"); }
        void hide() override { m_calls.emplace_back("overlay.hide"); }

    private:
        Calls &m_calls;
    };
};

} // namespace talmo::test
