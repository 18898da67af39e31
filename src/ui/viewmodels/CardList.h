#pragma once

#include <stats/StatsTexts.h>

#include <QStringList>
#include <QVariantList>

namespace tulvane {

/// Cards as QML reads them: objects with `title`, `value`, `subtitle` and, in the same order, a `symbol`.
[[nodiscard]] inline QVariantList cardList(const QList<StatCard>& cards, const QStringList& symbols)
{
    QVariantList list;
    for (qsizetype i = 0; i < cards.size(); ++i)
        list.append(QVariantMap{{QStringLiteral("title"), cards.at(i).title},
                                {QStringLiteral("value"), cards.at(i).value},
                                {QStringLiteral("subtitle"), cards.at(i).subtitle},
                                {QStringLiteral("symbol"), symbols.value(i)}});
    return list;
}

} // namespace tulvane
