#pragma once

#include <ports/KeyCombination.h>

#include <QString>

#include <optional>

namespace tulvane::swayBindings {

// Commands of sway's that bind a combination by its place on the keyboard to nothing: sway reports
// each edge on its socket.

/// Whether sway sees the key at all.
[[nodiscard]] bool canBind(const KeyCombination& combination);
/// `name` comes back with the edges.
[[nodiscard]] QString bind(const KeyCombination& combination, const QString& name);
/// The press alone: see `unbind`.
[[nodiscard]] QString bindPress(const KeyCombination& combination, const QString& name);
/// Never while the combination is held, nor bound anew then: sway keeps no track of the release's binding,
/// runs what it has freed, and its whole session ends.
[[nodiscard]] QString unbind(const KeyCombination& combination);
[[nodiscard]] QString unbindPress(const KeyCombination& combination);

struct Edge {
    QString name;
    bool isPress = false;
};
/// What a binding's command says, where it is one of ours.
[[nodiscard]] std::optional<Edge> read(const QString& command);

} // namespace tulvane::swayBindings
