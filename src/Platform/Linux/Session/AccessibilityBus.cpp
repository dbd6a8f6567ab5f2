#include "Platform/Linux/Session/AccessibilityBus.h"

#include <QDBusArgument>
#include <QDBusObjectPath>
#include <QDBusPendingCall>
#include <QDBusVariant>

#include <algorithm>
#include <utility>

namespace talmo {

namespace {

const QString connectionName = QStringLiteral("talmo-accessibility");
const QString accessibleInterface = QStringLiteral("org.a11y.atspi.Accessible");

// Numbers of the AT-SPI protocol.
constexpr int activeState = 1;
constexpr int focusedState = 12;
constexpr int showingState = 25;
constexpr quint32 passwordTextRole = 40;

/// Sends all calls before waiting for the first reply: a hundred calls then take little longer than one.
QList<QDBusMessage> askAll(const QDBusConnection &connection, const QList<QDBusMessage> &questions,
                           const QDeadlineTimer &deadline)
{
    const int timeout = static_cast<int>(std::max<qint64>(1, deadline.remainingTime()));
    QList<QDBusPendingCall> calls;
    for (const auto &question : questions) {
        calls.append(connection.asyncCall(question, timeout));
    }
    QList<QDBusMessage> answers;
    for (auto &call : calls) {
        call.waitForFinished();
        answers.append(call.reply());
    }
    return answers;
}

QDBusMessage question(const Accessible &object, const QString &name)
{
    return QDBusMessage::createMethodCall(object.service, object.path, accessibleInterface, name);
}

QDBusMessage childCountQuestion(const Accessible &object)
{
    auto message = QDBusMessage::createMethodCall(
        object.service, object.path, QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Get"));
    message << accessibleInterface << QStringLiteral("ChildCount");
    return message;
}

/// The reply's first value; invalid if the reply is an error.
QVariant value(const QDBusMessage &answer)
{
    return answer.type() == QDBusMessage::ReplyMessage ? answer.arguments().value(0) : QVariant();
}

/// The object references in the reply; none if it is not an array of them.
QList<Accessible> references(const QDBusMessage &answer)
{
    QList<Accessible> all;
    if (answer.signature() != QLatin1String("a(so)")) {
        return all;
    }
    const auto argument = value(answer).value<QDBusArgument>();
    argument.beginArray();
    while (!argument.atEnd()) {
        Accessible object;
        QDBusObjectPath path;
        argument.beginStructure();
        argument >> object.service >> path;
        argument.endStructure();
        object.path = path.path();
        all.append(object);
    }
    argument.endArray();
    return all;
}

/// The states, as bits.
quint64 states(const QDBusMessage &answer)
{
    QList<quint32> words;
    if (answer.signature() == QLatin1String("au")) {
        value(answer).value<QDBusArgument>() >> words;
    }
    return words.value(0) | quint64(words.value(1)) << 32;
}

bool has(quint64 states, int state)
{
    return (states >> state & 1) != 0;
}

} // namespace

std::unique_ptr<AccessibilityBus> AccessibilityBus::connect(QDeadlineTimer deadline)
{
    auto message = QDBusMessage::createMethodCall(QStringLiteral("org.a11y.Bus"), QStringLiteral("/org/a11y/bus"),
                                                  QStringLiteral("org.a11y.Bus"), QStringLiteral("GetAddress"));
    message.setAutoStartService(false);
    const auto answer = askAll(QDBusConnection::sessionBus(), {message}, deadline).first();
    const QString address = value(answer).toString();
    if (address.isEmpty()) {
        return nullptr;
    }
    auto connection = QDBusConnection::connectToBus(address, connectionName);
    if (!connection.isConnected()) {
        QDBusConnection::disconnectFromBus(connectionName);
        return nullptr;
    }
    return std::unique_ptr<AccessibilityBus>(new AccessibilityBus(connection, deadline));
}

AccessibilityBus::AccessibilityBus(QDBusConnection connection, QDeadlineTimer deadline)
    : m_connection(std::move(connection)),
      m_deadline(deadline)
{
}

AccessibilityBus::~AccessibilityBus()
{
    QDBusConnection::disconnectFromBus(connectionName);
}

QList<QDBusMessage> AccessibilityBus::ask(const QList<QDBusMessage> &questions)
{
    return askAll(m_connection, questions, m_deadline);
}

QList<Accessible> AccessibilityBus::applications()
{
    const Accessible registry{QStringLiteral("org.a11y.atspi.Registry"),
                              QStringLiteral("/org/a11y/atspi/accessible/root")};
    auto ofRegistry = question(registry, QStringLiteral("GetChildren"));
    ofRegistry.setAutoStartService(false);
    return references(ask({ofRegistry}).first());
}

QList<Accessible> AccessibilityBus::applications(qint64 processId)
{
    const auto all = applications();
    QList<QDBusMessage> questions;
    for (const auto &application : all) {
        const QString bus = QStringLiteral("org.freedesktop.DBus");
        auto whose = QDBusMessage::createMethodCall(bus, QStringLiteral("/org/freedesktop/DBus"), bus,
                                                    QStringLiteral("GetConnectionUnixProcessID"));
        questions.append(whose << application.service);
    }
    const auto answers = ask(questions);
    QList<Accessible> found;
    for (qsizetype index = 0; index < all.size(); ++index) {
        const auto owner = value(answers[index]);
        if (owner.isValid() && owner.toLongLong() == processId) {
            found.append(all[index]);
        }
    }
    return found;
}

QList<AccessibilityBus::Status> AccessibilityBus::statuses(const QList<Accessible> &objects)
{
    QList<QDBusMessage> questions;
    for (const auto &object : objects) {
        questions << question(object, QStringLiteral("GetState")) << childCountQuestion(object);
    }
    const auto answers = ask(questions);
    QList<Status> all;
    for (qsizetype index = 0; index < answers.size(); index += 2) {
        const auto bits = states(answers[index]);
        const int childCount = value(answers[index + 1]).value<QDBusVariant>().variant().toInt();
        all.append({has(bits, activeState), has(bits, focusedState), has(bits, showingState), childCount});
    }
    return all;
}

QList<Accessible> AccessibilityBus::children(const QList<Accessible> &parents)
{
    QList<QDBusMessage> questions;
    for (const auto &parent : parents) {
        questions.append(question(parent, QStringLiteral("GetChildren")));
    }
    QList<Accessible> all;
    for (const auto &answer : ask(questions)) {
        all.append(references(answer));
    }
    return all;
}

bool AccessibilityBus::isPasswordField(const Accessible &object)
{
    return value(ask({question(object, QStringLiteral("GetRole"))}).first()).toUInt() == passwordTextRole;
}

} // namespace talmo
