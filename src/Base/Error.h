#pragma once

#include <QString>

#include <exception>

namespace talmo {

/// An error whose description can be shown to the user. Every exception that crosses a module boundary derives from
/// this.
class Error : public std::exception {
public:
    explicit Error(QString description);

    /// The sentence for the user, before translation.
    QString localizedDescription() const { return m_description; }
    const char *what() const noexcept override;

private:
    QString m_description;
    QByteArray m_utf8;
};

/// Thrown by a cancelled wait, and by a call whose callee was destroyed before it could answer.
class Cancelled : public Error {
public:
    Cancelled();
};

/// Raised by a platform's audio layer where others would return an error.
class PlatformException : public std::exception {
public:
    PlatformException(QString name, QString reason);

    /// Either is empty if the platform did not supply it.
    QString name() const { return m_name; }
    QString reason() const { return m_reason; }
    const char *what() const noexcept override;

private:
    QString m_name;
    QString m_reason;
    QByteArray m_utf8;
};

/// The sentence to show for any exception: an Error's description, otherwise what(), otherwise a generic sentence.
/// Empty for null.
QString localizedDescription(const std::exception_ptr &error);

} // namespace talmo
