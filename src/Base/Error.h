#pragma once

#include <QString>

#include <exception>

namespace talmo {

/// Anything that can go wrong and be told to the user. What is thrown across a room derives from this.
class Error : public std::exception {
public:
    explicit Error(QString description);

    /// The sentence that the user sees, unchanged.
    QString localizedDescription() const { return m_description; }
    const char *what() const noexcept override;

private:
    QString m_description;
    QByteArray m_utf8;
};

/// Thrown by a wait that was cancelled, and by a call whose callee went away before it could answer.
class Cancelled : public Error {
public:
    Cancelled();
};

/// What a platform's audio layer raises where others return an error.
class PlatformException : public std::exception {
public:
    PlatformException(QString name, QString reason);

    /// Either may be empty: the platform did not say.
    QString name() const { return m_name; }
    QString reason() const { return m_reason; }
    const char *what() const noexcept override;

private:
    QString m_name;
    QString m_reason;
    QByteArray m_utf8;
};

/// The sentence to show for any exception: an Error's own, else its what(), else a last resort.
QString localizedDescription(const std::exception_ptr &error);

} // namespace talmo
