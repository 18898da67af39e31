#include <speech/ThreadCount.h>

#include <QThread>

#include <algorithm>

namespace tulvane {

int threadCountFor(int processors)
{
    constexpr int leftToOthers = 2;
    constexpr int most = 8;
    return std::min(std::max(processors, 1 + leftToOthers) - leftToOthers, most);
}

int recommendedThreadCount()
{
    return threadCountFor(QThread::idealThreadCount());
}

} // namespace tulvane
