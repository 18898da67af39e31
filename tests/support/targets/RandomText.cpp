#include "RandomText.h"

#include <QList>

#include <algorithm>
#include <cmath>

namespace tulvane::test {

namespace {

int among(std::mt19937& random, int count)
{
    // The same everywhere, unlike the library's distributions.
    return static_cast<int>(random() % static_cast<unsigned>(count));
}

char32_t character(std::mt19937& random, LineBreaks lineBreaks)
{
    static const auto usual = QStringLiteral("abcdefghijklmnopqrstuvwxyzABCXYZ0123456789").toUcs4();
    static const auto rare = QStringLiteral("æøåÆØÅ«»–€😀.,:;!?'\"\\/$%&<>{}[]()#@*_-+=~`^|").toUcs4();
    const int kind = among(random, 20);
    if (kind < 3)
        return U' ';
    if (kind == 3 && lineBreaks == LineBreaks::some)
        return U'\n';
    const auto& letters = kind < 12 ? usual : rare;
    return letters.at(among(random, static_cast<int>(letters.size())));
}

} // namespace

QString randomText(std::mt19937& random, int characters, LineBreaks lineBreaks)
{
    QList<char32_t> text(characters);
    std::ranges::generate(text, [&] { return character(random, lineBreaks); });
    const qsizetype spaces = std::min<qsizetype>(among(random, 4), characters - 1);
    std::fill(text.end() - spaces, text.end(), U' ');
    return QString::fromUcs4(text.constData(), text.size());
}

int randomLength(std::mt19937& random, int index, int longest)
{
    if (index < 2)
        return index == 0 ? longest : 1;
    const double share = among(random, 1000) / 1000.0;
    return static_cast<int>(std::lround(std::pow(static_cast<double>(longest), share)));
}

} // namespace tulvane::test
