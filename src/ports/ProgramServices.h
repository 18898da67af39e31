#pragma once

#include <ports/LocalServices.h>
#include <ports/SessionFacts.h>

#include <QProcessEnvironment>
#include <QString>

#include <memory>

namespace tulvane {

class AudioInput;
class BackgroundTransfers;
class PrivacyPermissions;
class RemoteControl;

/// What a process of the program may use without a desktop: the command line has nothing else. Each service
/// is opened when it is first asked for, and lives as long as this object. Main thread.
class ProgramServices : public LocalServices {
public:
    [[nodiscard]] virtual RemoteControl& remote() = 0;
    [[nodiscard]] virtual AudioInput& microphone() = 0;
    /// The sound server that the microphone is asked of, as it calls itself; empty where none has answered
    /// yet.
    [[nodiscard]] virtual QString soundServer() = 0;
    [[nodiscard]] virtual BackgroundTransfers& transfers() = 0;
    /// What this session lets the program do.
    [[nodiscard]] virtual const PrivacyPermissions& permissions() = 0;
    /// Asks anew at each call, and waits for the answers, for a moment.
    [[nodiscard]] virtual SessionFacts session() = 0;
};

struct ServiceOptions {
    QProcessEnvironment environment; ///< which tells the session
    QString transferHelper;          ///< the executable that downloads in the background
    QString transferFolder;          ///< for partial files, on the models' own file system
};

/// The services of the system that the program was built for. `clock` outlives them.
[[nodiscard]] std::unique_ptr<ProgramServices> openProgramServices(const ServiceOptions& options,
                                                                   const Clock& clock);

} // namespace tulvane
