#include <support/Paths.h>

// Known to this one file, so that all others compile alike wherever the tree lies.

namespace tulvane::test {

QString demoModelPath()
{
    return QStringLiteral(TULVANE_DEMO_MODEL);
}

QString sourceFolder()
{
    return QStringLiteral(TULVANE_SOURCE_FOLDER);
}

} // namespace tulvane::test
