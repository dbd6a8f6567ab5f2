#pragma once

#include "Recognition/Signal/VoiceActivity.h"

#include <cstddef>
#include <functional>
#include <memory>
#include <span>
#include <vector>

namespace talmo {

/// Cuts a recording into pieces of speech for models that recognise an utterance as a whole. It cuts at pauses, as soon
/// as they are long enough, and keeps a little of the silence around the speech. There are no pieces where there is no
/// speech.
class SpeechPieces {
public:
    static constexpr std::size_t sampleRate = 16000;
    /// How much is kept before and after speech; also the shortest pause to cut at.
    static constexpr std::size_t surroundings = sampleRate * 45 / 100;
    /// From this length on a piece ends at the next pause.
    static constexpr std::size_t longEnough = sampleRate * 4;
    /// A pause that ends any piece: it separates sentences.
    static constexpr std::size_t longPause = sampleRate;
    /// No model takes more.
    static constexpr std::size_t longest = sampleRate * 28;
    /// A piece shorter than this is padded with silence up to `padded`, since models invent words for very short audio.
    static constexpr std::size_t shortest = sampleRate;
    static constexpr std::size_t padded = sampleRate * 5 / 4;
    /// A piece with less speech than this is a click or a cough.
    static constexpr std::size_t leastSpeech = sampleRate / 10;

    /// A pause after which the piece is looked at before it is known whether it ends here. The key is usually released
    /// a little after the last word, so most of the piece has been recognised by then.
    static constexpr std::size_t lull = sampleRate / 5;
    /// During speech without a pause, checks are at least this far apart.
    static constexpr std::size_t glance = sampleRate * 3 / 2;
    /// A look that would take longer than this, in seconds, is not worth it: the end of the recording might have to
    /// wait for it.
    static constexpr double longestLook = 0.5;

    struct Handlers {
        /// `isSeen`: nothing has been said since the last look at it.
        std::function<void(std::vector<float> piece, bool isSeen)> take;
        /// Checks a piece that may not have ended. Returns how many seconds it took, on which later looks depend. Not
        /// required.
        std::function<double(std::vector<float> soFar)> look;
    };

    /// `activity`: of a new recording.
    SpeechPieces(std::shared_ptr<VoiceActivity> activity, Handlers handlers);

    /// Samples between -1 and 1. Throws what the parts given to the constructor throw.
    void accept(std::span<const float> samples);
    /// The recording ends: takes the last piece.
    void finish();

private:
    void judge(std::size_t windowEnd);
    bool isAtCut(std::size_t windowEnd) const;
    void cut(std::size_t end);
    std::size_t quietestCut() const;
    bool isTimeToLook(std::size_t windowEnd) const;
    void look(std::size_t windowEnd);
    std::vector<float> contentUpTo(std::size_t end) const;
    void forgetUpTo(std::size_t position);
    std::span<const float> between(std::size_t begin, std::size_t end) const;
    std::size_t heardEnd() const { return m_keptFrom + m_kept.size(); }

    std::shared_ptr<VoiceActivity> m_activity;
    Handlers m_handlers;
    // Positions count samples from the beginning of the recording.
    std::vector<float> m_kept;
    std::size_t m_keptFrom = 0;
    std::size_t m_judged = 0;
    bool m_isOpen = false;
    std::size_t m_pieceStart = 0;
    std::size_t m_speechStart = 0;
    std::size_t m_speechEnd = 0;
    std::size_t m_speech = 0;
    std::size_t m_lastLook = 0;
    /// Where speech ended for the last look at this piece; 0 before the first.
    std::size_t m_seen = 0;
    double m_lookTime = 0;   ///< What the last look took, in seconds.
    double m_lookLength = 0; ///< How much it looked at, in seconds.
};

} // namespace talmo
