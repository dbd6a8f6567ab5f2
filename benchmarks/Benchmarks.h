#pragma once

#include "Figures.h"
#include "TalmoDesktop.h"

namespace talmo::benchmarks {

/// Dictations, held and hands-free in turn, each followed by a bare paste of the same text through the same clipboard
/// and keys, so that the figures can be read as multiples of what no dictation can avoid.
void measureDictations(TalmoDesktop &on, Figures &figures, int rounds);

/// Starts of the program, and what it costs while nothing is dictated. Leaves a Talmo that has not dictated yet.
void measureIdling(TalmoDesktop &on, Figures &figures);

/// Texts of many lengths into a window, beside other ways of getting them there.
void measurePasting(TalmoDesktop &on, Figures &figures, int rounds);

/// Splitting, detection and formatting of long texts.
void measureText(Figures &figures, int rounds);

/// What the capture thread does with each buffer.
void measureAudio(Figures &figures);

/// From the last audio to the final text, for utterances of several lengths.
void measureRecognition(Figures &figures, int rounds);

} // namespace talmo::benchmarks
