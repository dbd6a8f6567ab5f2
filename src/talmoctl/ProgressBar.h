#pragma once

#include "Recognition/Models/ModelInstaller.h"

#include <optional>

namespace talmo::ctl {

/// On stderr: a progress bar on a terminal, else one line per step.
class ProgressBar {
public:
    ProgressBar() = default;
    ~ProgressBar();
    ProgressBar(const ProgressBar &) = delete;
    ProgressBar &operator=(const ProgressBar &) = delete;

    void show(const ModelProgress &progress);

private:
    std::optional<ModelProgress> m_last;
    bool m_isOpen = false;
};

} // namespace talmo::ctl
