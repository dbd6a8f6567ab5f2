#pragma once

#include <QString>

namespace talmo {

/// Sees to it that one Talmo runs for a user on a display. The kernel lets go of it with the process, however it ends.
class SingleInstance {
public:
    /// `path`: the file that stands for the place; made if need be. Where it cannot be made, this counts as the first.
    explicit SingleInstance(const QString &path);
    ~SingleInstance();
    SingleInstance(const SingleInstance &) = delete;
    SingleInstance &operator=(const SingleInstance &) = delete;

    bool isFirst() const { return m_isFirst; }

    /// Has the one that runs open its settings; waits for it while it is still starting, a few seconds at most. False
    /// when it does not answer.
    static bool askForSettings();

private:
    int m_file;
    bool m_isFirst;
};

} // namespace talmo
