#include <base/Translate.h>

#include <QCoreApplication>

namespace tulvane {

QString translate(const char* english)
{
    return QCoreApplication::translate("tulvane", english);
}

} // namespace tulvane
