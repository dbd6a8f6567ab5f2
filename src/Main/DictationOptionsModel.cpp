#include "Main/DictationOptionsModel.h"

#include <utility>

namespace talmo {

namespace {

struct Entry {
    QString key;
    bool isOnByDefault;
};

Entry entryOf(DictationOption option)
{
    switch (option) {
    case DictationOption::KeepHistory:
        return {QStringLiteral("linux.keepHistory"), false};
    case DictationOption::Sounds:
        return {QStringLiteral("linux.sounds"), false};
    case DictationOption::SpaceBetween:
        break;
    }
    return {QStringLiteral("linux.spaceBetweenDictations"), true};
}

} // namespace

DictationOptionsModel::DictationOptionsModel(std::shared_ptr<UserDefaults> defaults)
    : m_defaults(std::move(defaults))
{
}

bool DictationOptionsModel::isOn(DictationOption option) const
{
    const Entry entry = entryOf(option);
    return m_defaults->boolean(entry.key).value_or(entry.isOnByDefault);
}

void DictationOptionsModel::setOn(DictationOption option, bool isOn)
{
    Q_EMIT objectWillChange();
    m_defaults->set(entryOf(option).key, isOn);
}

} // namespace talmo
