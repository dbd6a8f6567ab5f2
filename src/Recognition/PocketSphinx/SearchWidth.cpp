#include "Recognition/PocketSphinx/SearchWidth.h"

namespace talmo {

int mostHypotheses(SearchWidth width)
{
    return width == SearchWidth::Wide ? 20000 : 5000;
}

SearchWidth widthAfterLoading(double seconds)
{
    // A machine on which loading takes 0.25 s recognises a second of speech in 0.3 s, or in 0.45 s with the wide
    // search.
    constexpr double longestLoading = 0.4;
    return seconds <= longestLoading ? SearchWidth::Wide : SearchWidth::Narrow;
}

SearchWidth widthAfterRecognising(SearchWidth width, std::optional<double> realTimeFactor)
{
    // The wide search takes half as long again. Between the two the choice stays, so that it does not change with every
    // sentence.
    constexpr double fastEnoughForWide = 0.45;
    constexpr double tooSlowForWide = 0.85;
    if (!realTimeFactor) {
        return width;
    }
    if (width == SearchWidth::Narrow) {
        return *realTimeFactor <= fastEnoughForWide ? SearchWidth::Wide : SearchWidth::Narrow;
    }
    return *realTimeFactor > tooSlowForWide ? SearchWidth::Narrow : SearchWidth::Wide;
}

} // namespace talmo
