#include <app/program/ProgramFolders.h>
#include <app/program/ServiceOptions.h>
#include <models/ModelFolders.h>

namespace tulvane {

ServiceOptions serviceOptions()
{
    return {.environment = QProcessEnvironment::systemEnvironment(),
            .transferHelper = ProgramFolders::ofThisProgram().transferHelper(),
            .transferFolder = ModelFolders::standard().transfers()};
}

} // namespace tulvane
