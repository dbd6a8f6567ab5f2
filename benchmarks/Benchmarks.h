#pragma once

#include "Figures.h"
#include "TalmoDesktop.h"

namespace talmo::benchmarks {

/// Dictations, held and hands-free in turn, each followed by a bare paste of the same text through the same clipboard
/// and keys, so that the figures can be read as multiples of what no dictation can avoid.
void measureDictations(TalmoDesktop &on, Figures &figures, int rounds);

/// The first dictations through microphones that Talmo does not know, and as many through one that it knows.
void measureUnknownMicrophones(TalmoDesktop &on, Figures &figures, int rounds);

/// The first dictation after a start, for which the engine must be loaded, and the second.
void measureColdStarts(TalmoDesktop &on, Figures &figures, int rounds);

/// A single dictation; `kind` is how its rows begin.
void dictateOnce(TalmoDesktop &on, Figures &figures, const QString &kind);

/// Starts of Talmo and of other programs of the tray.
void measureStarts(TalmoDesktop &on, Figures &figures, int rounds);

/// What Talmo costs while nothing is dictated. Leaves a Talmo that has not dictated yet.
void measureIdling(TalmoDesktop &on, Figures &figures);

/// What it costs once the engine is unloaded, and the first dictation after that. Takes eleven minutes.
void measureUnloading(TalmoDesktop &on, Figures &figures);

/// Texts of many lengths into a window, beside other ways of getting them there.
void measurePasting(TalmoDesktop &on, Figures &figures, int rounds);

/// Splitting, detection and formatting of long texts.
void measureText(Figures &figures, int rounds);

/// What the capture thread does with each buffer.
void measureAudio(Figures &figures);

/// From the last audio to the final text, for utterances of several lengths.
void measureRecognition(Figures &figures, int rounds);

/// Dictating without a pause for so many minutes, as fast as the engine takes it.
void measureHour(Figures &figures, int minutes);

/// Installing a model of 500 MB from this machine, beside what the shell needs for the same.
void measureModel(Figures &figures, int rounds);

} // namespace talmo::benchmarks
