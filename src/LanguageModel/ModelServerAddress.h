#pragma once

#include <QList>
#include <QString>
#include <QUrl>

namespace talmo {

/// The default ports of llama.cpp's server, Ollama, LM Studio, Jan and vLLM.
QList<int> usualModelServerPorts();

/// Where to look for a model server, in this order: the configured address, or these ports on this machine if none is
/// configured. The addresses end before "/v1" and use numeric hosts, so that no name is ever resolved.
///
/// Throws Error, with a sentence for the user, for anything but this machine's own loopback interface: dictated text
/// must not leave the machine.
QList<QUrl> modelServerAddresses(const QString &setting, const QList<int> &usualPorts = usualModelServerPorts());

} // namespace talmo
