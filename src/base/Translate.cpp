#include <base/Translate.h>

#include <QCoreApplication>
#include <QTranslator>

#include <atomic>

namespace tulvane {

namespace {

constexpr auto context = "tulvane";
std::atomic<const QTranslator*> onlyCatalogue = nullptr;

} // namespace

QString translate(const char* english)
{
    const QTranslator* const only = onlyCatalogue.load(std::memory_order_relaxed);
    if (!only)
        return QCoreApplication::translate(context, english);
    const QString word = only->translate(context, english);
    return word.isEmpty() ? QString::fromUtf8(english) : word;
}

const QTranslator* speakOnly(const QTranslator* catalogue)
{
    return onlyCatalogue.exchange(catalogue, std::memory_order_relaxed);
}

} // namespace tulvane
