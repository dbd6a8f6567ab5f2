#include "LanguageModel/SmallerModel.h"

#include <QRegularExpression>

#include <algorithm>
#include <array>

namespace talmo {

namespace {

struct Candidate {
    const char *name;
    int megabytes;
    double billions;
};

/// Largest first, all under the Apache licence 2.0. Models that reason before they answer are left out: that takes
/// longer than a smaller model saves.
constexpr std::array candidates = {
    Candidate{"Qwen3 4B Instruct 2507", 2500, 4.0},
    Candidate{"Granite 4.0 Micro", 2100, 3.4},
    Candidate{"Qwen2.5 0.5B Instruct", 491, 0.5},
};

/// A smaller step is not worth a download.
constexpr double leastStep = 1.5;

struct NamedSize {
    const char *name;
    double billions;
};

/// Names without a size, and what servers give under them.
constexpr std::array namedSizes = {
    NamedSize{"granite4", 3.4},
    NamedSize{"granite-4.0-micro", 3.4},
    NamedSize{"granite-4.0-h-micro", 3.2},
    NamedSize{"llama3.2", 3.2},
    NamedSize{"gemma3", 4.3},
    NamedSize{"qwen3", 8.2},
    NamedSize{"qwen2.5", 7.6},
    NamedSize{"mistral", 7.2},
};

/// Whether a name is this one, with a version or a suffix of no consequence for the size.
bool isNamed(const QString &model, QLatin1StringView name)
{
    const QString file = model.section(QLatin1Char('/'), -1);
    const QChar next = file.size() > name.size() ? file.at(name.size()) : QLatin1Char(':');
    return file.startsWith(name) && !next.isLetterOrNumber() && next != QLatin1Char('.');
}

} // namespace

std::optional<double> billionsOfParameters(const QString &model)
{
    const QString lower = model.toLower();
    // If a name has two sizes, as in "30b-a3b", the smaller one is the cost per token.
    static const QRegularExpression size(
        QStringLiteral("(?<![a-z0-9.])[ae]?(\\d{1,4}(?:\\.\\d{1,3})?)([bm])(?![a-z0-9])"));
    std::optional<double> billions;
    auto matches = size.globalMatch(lower);
    while (matches.hasNext()) {
        const auto match = matches.next();
        constexpr double millionsInBillion = 1000;
        const double number = match.captured(1).toDouble() / (match.captured(2) == u"m" ? millionsInBillion : 1);
        billions = std::min(billions.value_or(number), number);
    }
    if (billions) {
        return billions;
    }
    for (const auto &named : namedSizes) {
        if (isNamed(lower, QLatin1StringView(named.name))) {
            return named.billions;
        }
    }
    return std::nullopt;
}

std::optional<RecommendedModel> smallerModel(const QString &model)
{
    const auto billions = billionsOfParameters(model);
    for (const auto &candidate : candidates) {
        if (billions && candidate.billions * leastStep <= *billions) {
            return RecommendedModel{QLatin1StringView(candidate.name), QStringLiteral("Apache 2.0"),
                                    candidate.megabytes};
        }
    }
    return std::nullopt;
}

} // namespace talmo
