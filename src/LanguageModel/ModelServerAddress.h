#pragma once

#include <QList>
#include <QString>
#include <QUrl>

namespace talmo {

/// llama.cpp's server, Ollama, LM Studio.
QList<int> usualModelServerPorts();

/// Where to look for a model server, in this order: the address that the user gave, or these ports of this machine
/// where none was given. The addresses end before "/v1" and name their host by number, so that nobody is asked where a
/// name leads.
///
/// Throws Error, with a sentence for the user, for everything that is not this machine's own loopback interface: what
/// was dictated must not leave the machine.
QList<QUrl> modelServerAddresses(const QString &setting, const QList<int> &usualPorts = usualModelServerPorts());

} // namespace talmo
