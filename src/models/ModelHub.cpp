#include <base/Log.h>
#include <models/ModelHub.h>

namespace tulvane {

QUrl modelHubURL(const QString& fromEnvironment, const QString& fromSettings)
{
    for (const QString& text : {fromEnvironment, fromSettings}) {
        if (text.isEmpty())
            continue;
        QUrl url(text, QUrl::StrictMode);
        const bool isWeb = url.scheme() == u"https" || url.scheme() == u"http";
        if (!url.isValid() || !isWeb || url.host().isEmpty() || url.hasQuery() || url.hasFragment()) {
            qCCritical(lcModels).noquote() << "Not the address of a model hub:" << text;
            continue;
        }
        if (!url.path().endsWith(u'/'))
            url.setPath(url.path() + u'/');
        return url;
    }
    return QUrl(QStringLiteral("https://huggingface.co/"));
}

} // namespace tulvane
