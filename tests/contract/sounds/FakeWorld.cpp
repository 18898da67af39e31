#include "SoundsWorld.h"

#include <platform/fake/FakeSounds.h>

#include <utility>

namespace tulvane::test {

namespace {

class FakeWorld final : public SoundsWorld {
public:
    [[nodiscard]] Sounds& sounds() override { return m_sounds; }
    [[nodiscard]] QStringList heard() override
    {
        // The double notes every name that it is given; speakers sound for those that there are.
        QStringList names = std::exchange(m_sounds.played, {});
        names.removeIf([](const QString& name) {
            return name != Sounds::pop && name != Sounds::tink && name != Sounds::morse &&
                   name != Sounds::basso;
        });
        return names;
    }
    [[nodiscard]] bool isMicrophoneOpen() const override { return false; }

private:
    FakeSounds m_sounds;
};

} // namespace

std::unique_ptr<SoundsWorld> makeFakeWorld()
{
    return std::make_unique<FakeWorld>();
}

} // namespace tulvane::test
