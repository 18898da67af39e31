#include <stats/DailyStat.h>

#include <QtNumeric>

namespace tulvane {

bool DailyStat::add(const DailyStat& other)
{
    DailyStat sum = *this;
    if (qAddOverflow(dictations, other.dictations, &sum.dictations) ||
        qAddOverflow(words, other.words, &sum.words) ||
        qAddOverflow(characters, other.characters, &sum.characters))
        return false;
    sum.speechSeconds += other.speechSeconds;
    *this = sum;
    return true;
}

} // namespace tulvane
