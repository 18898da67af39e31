#pragma once

#include <ports/Sounds.h>

#include <QStringList>

namespace tulvane {

/// Keeps the names of what was played, oldest first.
class FakeSounds final : public Sounds {
public:
    void play(QLatin1StringView name) override { played.append(QString(name)); }

    QStringList played;
};

} // namespace tulvane
