#include "LanguageModel/ModelServerAddress.h"

#include "Base/Error.h"

#include <QHostAddress>
#include <QStringList>

namespace talmo {

namespace {

QUrl onThisMachine(int port)
{
    QUrl url;
    url.setScheme(QStringLiteral("http"));
    url.setHost(QHostAddress(QHostAddress::LocalHost).toString());
    url.setPort(port);
    return url;
}

[[noreturn]] void refuse(const QString &setting, const QString &why)
{
    throw Error(QStringLiteral("The language model's address “%1” was refused: %2").arg(setting, why));
}

/// The numeric addresses of a host; empty if it is not this machine.
QStringList loopbackNumbers(const QString &host)
{
    // Hard-coded: a resolver could answer anything, and asking one may use the network.
    if (host.compare(QStringLiteral("localhost"), Qt::CaseInsensitive) == 0) {
        return {QHostAddress(QHostAddress::LocalHost).toString(), QHostAddress(QHostAddress::LocalHostIPv6).toString()};
    }
    const QHostAddress address(host);
    const bool isVersion4 = address.protocol() == QAbstractSocket::IPv4Protocol && address.isLoopback();
    // IPv4-mapped IPv6 addresses are routed differently, and there is no need for them.
    const bool isVersion6 = address == QHostAddress(QHostAddress::LocalHostIPv6) && address.scopeId().isEmpty();
    return isVersion4 || isVersion6 ? QStringList{address.toString()} : QStringList();
}

} // namespace

QList<int> usualModelServerPorts()
{
    return {8080, 11434, 1234, 1337, 8000};
}

QList<QUrl> modelServerAddresses(const QString &setting, const QList<int> &usualPorts)
{
    const QString trimmed = setting.trimmed();
    QList<QUrl> addresses;
    if (trimmed.isEmpty()) {
        for (const int port : usualPorts) {
            addresses.append(onThisMachine(port));
        }
        return addresses;
    }
    QUrl url(trimmed.contains(QStringLiteral("://")) ? trimmed : QStringLiteral("http://") + trimmed, QUrl::StrictMode);
    if (!url.isValid() || url.host().isEmpty()) {
        refuse(setting, QStringLiteral("it is not a valid address. Use one such as http://127.0.0.1:8080"));
    }
    if (url.scheme() != QStringLiteral("http")) {
        refuse(setting, QStringLiteral("only http is supported, since nothing is sent over a network."));
    }
    if (!url.userInfo().isEmpty() || url.hasQuery() || url.hasFragment()) {
        refuse(setting, QStringLiteral("only a host, a port and a path are allowed."));
    }
    const auto numbers = loopbackNumbers(url.host());
    if (numbers.isEmpty()) {
        refuse(setting,
               QStringLiteral("only 127.0.0.1, [::1] and localhost are certain to be this machine, and what you "
                              "dictate must not leave it."));
    }
    QString path = url.path();
    while (path.endsWith(QLatin1Char('/'))) {
        path.chop(1);
    }
    if (path.endsWith(QStringLiteral("/v1"))) {
        path.chop(3);
    }
    url.setPath(path);
    for (const auto &number : numbers) {
        url.setHost(number);
        addresses.append(url);
    }
    return addresses;
}

} // namespace talmo
