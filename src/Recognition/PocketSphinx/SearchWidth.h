#pragma once

#include <optional>

namespace talmo {

/// How many hypotheses the embedded engine follows at once: the more, the fewer words are wrong, and the longer it
/// takes. Chosen by the machine's speed.
enum class SearchWidth { Narrow, Wide };

/// The limit for each frame of a hundredth of a second. Without a limit, noise would keep every hypothesis alive and
/// decoding would take longer than real time.
int mostHypotheses(SearchWidth width);

/// `realTimeFactor`: seconds of processor time for each second of speech, with this width; nullopt if too little has
/// been recognised to tell.
SearchWidth widthAfterRecognising(SearchWidth width, std::optional<double> realTimeFactor);

} // namespace talmo
