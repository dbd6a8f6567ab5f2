#include "Recognition/Sherpa/SherpaFunctions.h"

#include "Base/DetailedError.h"
#include "Base/Error.h"

#include <QVersionNumber>

#include <dlfcn.h>

namespace talmo {

void *SherpaFunctions::find(void *library, const char *name)
{
    void *function = dlsym(library, name);
    if (function == nullptr) {
        throw DetailedError(
            QStringLiteral(QT_TRANSLATE_NOOP(
                "Talmo", "The neural recogniser's library is incomplete. Install the recogniser again.")),
            QStringLiteral("it lacks %1").arg(QLatin1String(name)));
    }
    return function;
}

void SherpaFunctions::resolveAll(void *library)
{
    resolve(library, "SherpaOnnxCreateOnlineRecognizer", createRecogniser);
    resolve(library, "SherpaOnnxDestroyOnlineRecognizer", destroyRecogniser);
    resolve(library, "SherpaOnnxCreateOnlineStream", createStream);
    resolve(library, "SherpaOnnxCreateOnlineStreamWithHotwords", createStreamWithHotwords);
    resolve(library, "SherpaOnnxDestroyOnlineStream", destroyStream);
    resolve(library, "SherpaOnnxOnlineStreamAcceptWaveform", accept);
    resolve(library, "SherpaOnnxIsOnlineStreamReady", isReady);
    resolve(library, "SherpaOnnxDecodeOnlineStream", decode);
    resolve(library, "SherpaOnnxGetOnlineStreamResultAsJson", resultAsJson);
    resolve(library, "SherpaOnnxDestroyOnlineStreamResultJson", destroyJson);
    resolve(library, "SherpaOnnxOnlineStreamInputFinished", inputFinished);
    resolve(library, "SherpaOnnxOnlineStreamIsEndpoint", isEndpoint);
    resolve(library, "SherpaOnnxOnlineStreamReset", reset);
    try {
        resolve(library, "SherpaOnnxOnlineStreamSetOption", setStreamOption);
    } catch (const Error &) { // NOLINT(bugprone-empty-catch): only models of several languages need it.
    }
    try {
        resolveOffline(library);
    } catch (const Error &) {
        m_offlineProblem = std::current_exception(); // Streaming models need none of these.
    }
}

void SherpaFunctions::resolveOffline(void *library)
{
    resolve(library, "SherpaOnnxCreateOfflineRecognizer", createOfflineRecogniser);
    resolve(library, "SherpaOnnxOfflineRecognizerSetConfig", configureOfflineRecogniser);
    resolve(library, "SherpaOnnxDestroyOfflineRecognizer", destroyOfflineRecogniser);
    resolve(library, "SherpaOnnxCreateOfflineStream", createOfflineStream);
    resolve(library, "SherpaOnnxDestroyOfflineStream", destroyOfflineStream);
    resolve(library, "SherpaOnnxAcceptWaveformOffline", acceptOffline);
    resolve(library, "SherpaOnnxDecodeOfflineStream", decodeOffline);
    resolve(library, "SherpaOnnxGetOfflineStreamResult", offlineResult);
    resolve(library, "SherpaOnnxDestroyOfflineRecognizerResult", destroyOfflineResult);
    resolve(library, "SherpaOnnxCreateVoiceActivityDetector", createVoiceActivity);
    resolve(library, "SherpaOnnxDestroyVoiceActivityDetector", destroyVoiceActivity);
    resolve(library, "SherpaOnnxVoiceActivityDetectorAcceptWaveform", acceptVoice);
    resolve(library, "SherpaOnnxVoiceActivityDetectorDetected", isVoiceDetected);
    resolve(library, "SherpaOnnxVoiceActivityDetectorClear", clearVoice);
    resolve(library, "SherpaOnnxVoiceActivityDetectorReset", resetVoice);
}

void SherpaFunctions::requireOffline() const
{
    const QVersionNumber oldest(oldestOffline[0], oldestOffline[1], oldestOffline[2]);
    const QVersionNumber unknown(firstUnknownOffline[0], firstUnknownOffline[1], firstUnknownOffline[2]);
    const auto found = QVersionNumber::fromString(QString::fromUtf8(version()));
    if (found < oldest || found >= unknown) {
        throw DetailedError(
            QStringLiteral(QT_TRANSLATE_NOOP("Talmo", "The neural recogniser's library is of a version that models of "
                                                      "this kind do not work with. Install the model again.")),
            QStringLiteral("version %1; %2 or later, before %3 is needed")
                .arg(found.toString(), oldest.toString(), unknown.toString()));
    }
    if (m_offlineProblem) {
        std::rethrow_exception(m_offlineProblem);
    }
}

} // namespace talmo
