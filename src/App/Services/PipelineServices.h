#pragma once

#include "Base/Observable.h"

#include <QCoro/QCoroTask>

#include <QString>
#include <QStringList>

#include <exception>
#include <functional>
#include <memory>

/// The coordinator's interfaces to all services, and the values they exchange. Everything is called on the main thread,
/// and all callbacks arrive there, unless a comment says otherwise. Nothing here retries; a failure is thrown once.
namespace talmo {

class AudioBuffer;
struct AudioTime;

/// A permission's status.
enum class SimpleStatus { NotDetermined, Granted, Denied };

/// One locale's on-device speech model. An installed one is always supported.
struct ModelStatus {
    bool supported = false;
    bool installed = false;
    bool operator==(const ModelStatus &) const = default;
};

/// The tone of the cleaned text, in display order.
enum class TextTone { Standard, Professional, Friendly, Polite };

/// Called on the capture thread for every captured buffer, one at a time.
using AudioBufferHandler = std::function<void(const std::shared_ptr<const AudioBuffer> &, const AudioTime &)>;

class SettingsService : public Observable {
    Q_OBJECT

public:
    using Observable::Observable;
    virtual bool aiCleanupEnabled() const = 0;
    virtual bool conciseTextEnabled() const = 0;
    virtual TextTone textTone() const = 0;
    virtual QStringList dictionaryWords() const = 0;
};

class PermissionsService : public Observable {
    Q_OBJECT

public:
    using Observable::Observable;
    virtual SimpleStatus microphoneStatus() const = 0;
    virtual SimpleStatus speechRecognitionStatus() const = 0;

    /// Ask the user if undecided, then re-read all statuses; true if granted.
    virtual QCoro::Task<bool> requestMicrophonePermission() = 0;
    virtual QCoro::Task<bool> requestSpeechRecognitionPermission() = 0;
    /// Asks the system to prompt for permission to synthesise input; does not wait for the answer.
    virtual void requestAccessibility() = 0;
};

class HotkeyService {
public:
    virtual ~HotkeyService() = default;
    /// Start and end of a gesture. Unset callbacks are skipped.
    virtual void setOnHotkeyDown(std::function<void()> callback) = 0;
    virtual void setOnHotkeyUp(std::function<void()> callback) = 0;
    /// Starts watching the key; a second call does nothing.
    virtual void start() = 0;
};

class RecorderService {
public:
    virtual ~RecorderService() = default;
    /// Starts capture; throws RecorderError. Does nothing while recording. Called on the transcription thread.
    virtual void start(AudioBufferHandler onBuffer) = 0;
    /// Stops capture if it is running. No handler runs after this has returned. Main or transcription thread.
    virtual void stop() = 0;
};

class TranscriptionService {
public:
    /// The whole transcript so far, never a delta.
    using UpdateHandler = std::function<void(const QString &)>;
    /// At most once per recording.
    using ErrorHandler = std::function<void(const std::exception_ptr &)>;

    virtual ~TranscriptionService() = default;
    /// Never throws.
    virtual QCoro::Task<ModelStatus> modelStatus(QString locale) = 0;
    /// The one-time download. Throws.
    virtual QCoro::Task<void> installModel(QString locale) = 0;
    /// Starts capture through the recorder, and live transcription. Throws.
    virtual QCoro::Task<void> startTranscription(std::shared_ptr<RecorderService> recorder, QString locale,
                                                 UpdateHandler onUpdate, ErrorHandler onError) = 0;
    /// The trimmed final transcript, once all audio so far has been processed. Throws.
    virtual QCoro::Task<QString> stopTranscription() = 0;
    /// Abandons a transcription. Never throws.
    virtual QCoro::Task<void> cancelTranscription() = 0;
};

class CleanupService {
public:
    virtual ~CleanupService() = default;
    /// The text to insert for a trimmed, non-empty transcript. Works off the main thread; never throws.
    virtual QCoro::Task<QString> cleanup(QString transcript, bool aiCleanupEnabled, bool conciseTextEnabled,
                                         TextTone textTone, QStringList dictionaryWords) = 0;
};

class TextInsertionService {
public:
    virtual ~TextInsertionService() = default;
    /// Inserts the text into the frontmost application. Throws. One at a time.
    virtual QCoro::Task<void> insert(QString text) = 0;
};

class OverlayService {
public:
    virtual ~OverlayService() = default;
    /// Shows the overlay or raises it.
    virtual void show() = 0;
    virtual void hide() = 0;
};

/// The user's current language, re-read for every dictation.
class LocaleSource {
public:
    virtual ~LocaleSource() = default;
    /// Such as "en_US"; passed on unvalidated from the system.
    virtual QString currentIdentifier() const = 0;
};

} // namespace talmo
