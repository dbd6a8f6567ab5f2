#include "Recognition/PocketSphinx/SearchWidth.h"

namespace talmo {

int mostHypotheses(SearchWidth width)
{
    return width == SearchWidth::Wide ? 20000 : 5000;
}

SearchWidth widthAfterRecognising(SearchWidth width, std::optional<double> realTimeFactor)
{
    // The wide search takes half as long again for speech, but several times as long for noise, in which it must not
    // fall behind either. Between the two the choice is kept, so that it does not change with every sentence.
    constexpr double fastEnoughForWide = 0.12;
    constexpr double tooSlowForWide = 0.3;
    if (!realTimeFactor) {
        return width;
    }
    if (width == SearchWidth::Narrow) {
        return *realTimeFactor <= fastEnoughForWide ? SearchWidth::Wide : SearchWidth::Narrow;
    }
    return *realTimeFactor > tooSlowForWide ? SearchWidth::Narrow : SearchWidth::Wide;
}

} // namespace talmo
