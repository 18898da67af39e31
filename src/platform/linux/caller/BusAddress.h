#pragma once

#include <QByteArray>
#include <QByteArrayList>

namespace tulvane {

/// The sockets of this machine that a bus's address names, in its order: paths, and names of abstract ones
/// with a zero in front. What else an address may name is left out.
[[nodiscard]] QByteArrayList busSockets(const QByteArray& address);

/// The same of the user's session bus, by the environment.
[[nodiscard]] QByteArrayList sessionBusSockets();

} // namespace tulvane
