#pragma once

#include "JsonProcess.h"
#include "TargetPrograms.h"

namespace tulvane::test {

/// A browser with one page, whose text area has the focus. It is asked over its own debugging pipe.
class ChromiumTarget final : public TargetProgram {
public:
    explicit ChromiumTarget(VirtualDesktop& desktop);

    [[nodiscard]] QByteArray text() override;
    void clear() override;
    [[nodiscard]] QString focus() override;
    [[nodiscard]] bool takesLineBreaks() const override { return true; }

private:
    [[nodiscard]] static QProcess& startBrowser(VirtualDesktop& desktop);
    void attach();
    QJsonObject command(const char* method, const QJsonObject& parameters);
    /// The value of an expression in the page; it is a text.
    [[nodiscard]] QString evaluate(const char* expression);

    JsonProcess m_browser;
    QString m_session;
};

} // namespace tulvane::test
