#pragma once

#include "Settings/WordPronunciations.h"

#include <map>

namespace talmo::test {

class FakePronunciations final : public WordPronunciations {
public:
    std::map<QString, QString> sounds;
    int refreshes = 0;

    void refresh() override { ++refreshes; }
    QString of(const QString &word) const override
    {
        const auto sound = sounds.find(word);
        return sound == sounds.end() ? QString() : sound->second;
    }
    void set(const QString &word, const QString &soundsLike) override
    {
        Q_EMIT objectWillChange();
        sounds[word] = soundsLike;
    }
};

} // namespace talmo::test
