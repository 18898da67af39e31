#pragma once

#include <QStringList>
#include <QtGlobal>

namespace tulvane {

/// The program that the user's keys reach.
struct FrontProgram {
    quint64 window = 0; ///< by the desktop's own number; 0 where no window has the keyboard, or none is known
    QStringList classes; ///< the application id, or both parts of WM_CLASS
    quint32 process = 0; ///< 0 where the desktop does not tell
    bool isX11 = false;  ///< shown by XWayland: what it reads, the compositor reads for it

    [[nodiscard]] friend bool operator==(const FrontProgram&, const FrontProgram&) = default;
};

/// Tells which program is in front. Main thread; may wait for the desktop, never for another program.
class FrontPrograms {
public:
    FrontPrograms() = default;
    FrontPrograms(const FrontPrograms&) = delete;
    FrontPrograms& operator=(const FrontPrograms&) = delete;
    virtual ~FrontPrograms() = default;

    [[nodiscard]] virtual FrontProgram current() = 0;
};

} // namespace tulvane
