#pragma once

#include <support/ScratchFolder.h>

#include <QFile>
#include <QProcessEnvironment>
#include <QString>

namespace tulvane::test {

/// GNOME's settings behind its tool's name, one file each. Without a bus the tool says that all is well and
/// writes nothing, as the real one does.
class ScriptedSettings final {
public:
    ScriptedSettings()
    {
        const QString tool = m_folder.write(QStringLiteral("gsettings"), R"sh(#!/bin/sh
cd "${0%/*}"
file=$(echo "$2 $3" | tr / _)
case $1 in
get) cat "$file" 2>&- ;;
set) test -e no-bus || echo "$4" > "$file" ;;
list-recursively) for file in "$(echo "$2" | tr / _) "*; do test -e "$file" && echo "$file" "$(cat "$file")"; done ;;
reset-recursively) test -e no-bus || rm -f "$(echo "$2" | tr / _) "* ;;
esac
)sh");
        QFile::setPermissions(tool, QFile::permissions(tool) | QFile::ExeUser);
        qputenv("PATH", m_folder.path().toUtf8() + ':' + m_before);
    }
    ScriptedSettings(const ScriptedSettings&) = delete;
    ScriptedSettings& operator=(const ScriptedSettings&) = delete;
    ~ScriptedSettings() { qputenv("PATH", m_before); }

    [[nodiscard]] static QProcessEnvironment environment()
    {
        return QProcessEnvironment::systemEnvironment();
    }
    void set(const QString& schema, const QString& name, const QString& value) const
    {
        m_folder.write(fileOf(schema, name), value.toUtf8() + '\n');
    }
    [[nodiscard]] QString get(const QString& schema, const QString& name) const
    {
        return QString::fromUtf8(m_folder.read(fileOf(schema, name))).trimmed();
    }
    void setBusGone(bool isGone) const
    {
        if (isGone)
            m_folder.write(QStringLiteral("no-bus"), {});
        else
            QFile::remove(m_folder.file(QStringLiteral("no-bus")));
    }

private:
    static QString fileOf(const QString& schema, const QString& name)
    {
        return QString(schema).replace(u'/', u'_') + u' ' + name;
    }

    QByteArray m_before = qgetenv("PATH");
    ScratchFolder m_folder;
};

} // namespace tulvane::test
