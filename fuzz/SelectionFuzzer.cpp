// Selection properties written by other X clients: target lists, MULTIPLE requests and incremental values.

#include "Fuzzing.h"
#include "Platform/Linux/X11/Clipboard/IncrementalValue.h"
#include "Platform/Linux/X11/Clipboard/SelectionServer.h"
#include "Platform/Linux/X11/Clipboard/SelectionTargets.h"

#include <algorithm>
#include <array>
#include <set>

using namespace talmo;
using fuzz::require;

namespace {

/// Small numbers, so that duplicates and excluded targets occur.
constexpr std::array<xcb_atom_t, 3> excluded = {1, 2, 0x01010101};
constexpr int unitSizes[] = {8, 16, 32, 0};

void checkTargets(FuzzedDataProvider &data)
{
    const int unitBits = data.PickValueInArray(unitSizes);
    const auto limit = data.ConsumeIntegralInRange<std::size_t>(0, 20);
    const QByteArray property = fuzz::rest(data);
    const auto offered = atomsOf(property, unitBits);
    require(unitBits == 32 ? offered.size() == std::size_t(property.size()) / 4 : offered.empty());
    const auto targets = SelectionTargets::parse(property, unitBits, excluded, limit);
    std::set<xcb_atom_t> distinct(offered.begin(), offered.end());
    distinct.erase(XCB_ATOM_NONE);
    for (const xcb_atom_t atom : excluded) {
        distinct.erase(atom);
    }
    const std::set<xcb_atom_t> read(targets.atoms.begin(), targets.atoms.end());
    require(read.size() == targets.atoms.size());
    require(std::includes(distinct.begin(), distinct.end(), read.begin(), read.end()));
    require(targets.atoms.size() == std::min(limit, distinct.size()));
    require(targets.isTruncated == (distinct.size() > limit));
}

void checkMultiple(FuzzedDataProvider &data)
{
    const auto pairs = atomsOf(fuzz::rest(data), 32);
    constexpr xcb_atom_t multiple = 7;
    std::size_t served = 0;
    const auto answer = serveMultiple(pairs, multiple, [&served](xcb_atom_t target, xcb_atom_t property) {
        require(target != multiple && property != XCB_ATOM_NONE);
        ++served;
        return target % 2 == 0;
    });
    require(answer.size() == pairs.size() && served <= pairs.size() / 2);
    for (std::size_t index = 0; index < pairs.size(); ++index) {
        const bool isProperty = index % 2 == 1;
        require(answer[index] == pairs[index] || (isProperty && answer[index] == XCB_ATOM_NONE));
    }
}

void checkPieces(FuzzedDataProvider &data)
{
    using State = IncrementalValue::State;
    const auto limit = data.ConsumeIntegralInRange<qsizetype>(0, 64);
    IncrementalValue value(limit);
    QByteArray expected;
    State before = State::Incomplete;
    while (data.remaining_bytes() > 0) {
        const SelectionValue piece{fuzz::bytesUpTo(data, 16), data.ConsumeIntegralInRange<xcb_atom_t>(0, 1),
                                   data.PickValueInArray(unitSizes)};
        const State state = value.append(piece);
        require(before == State::Incomplete || state == before);
        require(value.size() <= limit);
        if (before == State::Incomplete && state == State::Incomplete) {
            require(!piece.data.isEmpty());
            expected += piece.data;
        }
        before = state;
    }
    const auto whole = value.take();
    require(whole.data == (before == State::Complete ? expected : QByteArray()));
    require(value.take() == SelectionValue());
}

void checkText(FuzzedDataProvider &data)
{
    const QString text = fuzz::textUpTo(data, data.remaining_bytes());
    std::set<QString> types;
    for (const auto &each : textRepresentations(text)) {
        require(types.insert(each.type).second);
        require(each.nativeUnitBits == 8);
        if (each.nativeEncoding == QStringLiteral("STRING")) {
            require(QString::fromLatin1(each.data) == text);
        } else if (each.type.startsWith(QStringLiteral("text/plain"))) {
            require(each.data == text.toUtf8());
        }
    }
    require(types.contains(QStringLiteral("UTF8_STRING")));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *bytes, std::size_t size)
{
    FuzzedDataProvider data(bytes, size);
    switch (data.ConsumeIntegralInRange(0, 3)) {
    case 0:
        checkTargets(data);
        break;
    case 1:
        checkMultiple(data);
        break;
    case 2:
        checkPieces(data);
        break;
    default:
        checkText(data);
        break;
    }
    return 0;
}
