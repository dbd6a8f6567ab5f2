#include "Recognition/RecogniserChoice.h"

namespace talmo {

namespace {

/// It is in no model's name.
constexpr QLatin1Char separator('+');

} // namespace

RecogniserChoice RecogniserChoice::of(const QString &stored)
{
    RecogniserChoice choice;
    const QString live = stored.section(separator, 0, -2);
    const QString final = stored.section(separator, -1);
    choice.live = live.isEmpty() ? automatic() : live;
    choice.final = final.isEmpty() ? automatic() : final;
    return choice;
}

QString RecogniserChoice::stored() const
{
    return live == automatic() ? final : live + separator + final;
}

} // namespace talmo
