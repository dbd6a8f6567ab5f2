#pragma once

#include <QString>

#include <optional>

namespace talmo {

/// A language model that Talmo can recommend.
struct RecommendedModel {
    QString name;
    QString licence;
    int megabytes = 0; ///< Of its file, quantised to four bits (Q4_K_M).
};

/// How many billions of parameters a model reads for each token, by its name on a server, such as
/// "qwen2.5:7b-instruct". Nullopt if the name does not tell.
std::optional<double> billionsOfParameters(const QString &model);

/// The largest recommended model that is clearly faster than this one. Nullopt if there is none, or if this one's size
/// is unknown.
std::optional<RecommendedModel> smallerModel(const QString &model);

} // namespace talmo
