#include <base/ByteCount.h>
#include <base/Translate.h>

#include <QLocale>

#include <array>
#include <cmath>

namespace tulvane {

namespace {

struct Unit {
    const char* text;
    int decimals;
};
// Exa is the largest that 64 bits reach.
constexpr std::array units{
    Unit{QT_TRANSLATE_NOOP("tulvane", "%1 KB"), 0}, Unit{QT_TRANSLATE_NOOP("tulvane", "%1 MB"), 1},
    Unit{QT_TRANSLATE_NOOP("tulvane", "%1 GB"), 2}, Unit{QT_TRANSLATE_NOOP("tulvane", "%1 TB"), 2},
    Unit{QT_TRANSLATE_NOOP("tulvane", "%1 PB"), 2}, Unit{QT_TRANSLATE_NOOP("tulvane", "%1 EB"), 2},
};

double rounded(double value, int decimals)
{
    const double scale = std::pow(10.0, decimals);
    return std::round(value * scale) / scale;
}

} // namespace

QString byteCountText(qint64 bytes)
{
    if (bytes == 0)
        return translate("Zero KB");
    if (bytes == 1)
        return translate("1 byte");
    if (bytes > -1000 && bytes < 1000)
        return translate("%1 bytes").arg(bytes);

    double value = static_cast<double>(bytes) / 1000.0;
    std::size_t unit = 0;
    // Judged after rounding, so that 999,960 bytes are "1 MB" and not "1,000 KB".
    while (unit + 1 < units.size() && std::abs(rounded(value, units[unit].decimals)) >= 1000.0) {
        value /= 1000.0;
        ++unit;
    }
    QLocale locale;
    locale.setNumberOptions(locale.numberOptions() | QLocale::OmitGroupSeparator);
    const double shown = rounded(value, units[unit].decimals);
    const QString number = locale.toString(shown, 'g', QLocale::FloatingPointShortest);
    return translate(units[unit].text).arg(number);
}

} // namespace tulvane
