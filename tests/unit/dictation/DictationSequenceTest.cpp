#include "ControllerFixture.h"

#include <support/Paths.h>

#include <QFile>

namespace tulvane::test {

namespace {

using namespace std::chrono_literals;

/// A dictation over the fakes, with every call across a port written down in its order as "FROM > TO: CALL".
/// The calls of fakes that do not report them are looked up whenever one of the others reports.
class DictationSequence : public ControllerFixture {
protected:
    void SetUp() override
    {
        ControllerFixture::SetUp();
        settle();
        m_heard = input.calls().size();
        m_loads = engine.loads.size();
        m_transcriptions = engine.transcriptions.size();
        m_shown = indicator.visibility;
        QObject::connect(controller.get(), &DictationController::phaseChanged, [this](const Phase& phase) {
            note("DictationController > DictationController",
                 QStringLiteral("phase “%1”").arg(nameOf(phase)));
        });
        sounds.onPlay = [this] { note("DictationController > Sounds", sounds.played.last()); };
        boards.generalBoard.journal = [this](const QString& operation) {
            note("TextInserter > Pasteboard", operation.section(u' ', 0, 0));
        };
        keys.onPost = [this](auto) {
            const bool isFirst = keys.posted().size() == 1;
            note("TextInserter > KeyPosting", isFirst ? QStringLiteral("paste") : QStringLiteral("space"));
        };
        boards.generalBoard.tellReads();
    }

    void note(const char* way, const QString& call)
    {
        lookUp();
        append(way, call);
    }

    void pressHotkey()
    {
        note("GlobalHotkeys > HotkeyController", QStringLiteral("pressed"));
        press();
        lookUp();
    }

    void programReads()
    {
        note("Pasteboard > TextInserter", QStringLiteral("the text was read"));
        boards.generalBoard.frontProgramReads();
        settle();
    }

    [[nodiscard]] QStringList lines() const { return m_lines; }

private:
    void append(const char* way, const QString& call)
    {
        m_lines.append(QString::fromUtf8(way) + QStringLiteral(": ") + call);
    }

    void lookUp()
    {
        const QStringList actions = log.texts("hotkey", QtDebugMsg);
        for (; m_actions < actions.size(); ++m_actions)
            append("HotkeyController > DictationController", actions[m_actions].section(u' ', -1));
        const QStringList heard = input.calls();
        for (; m_heard < heard.size(); ++m_heard)
            append("AudioRecorder > AudioInput", heard[m_heard]);
        for (; m_loads < engine.loads.size(); ++m_loads)
            append("DictationSession > Recognizer", QStringLiteral("load"));
        for (; m_transcriptions < engine.transcriptions.size(); ++m_transcriptions)
            append("DictationSession > Recognizer", QStringLiteral("transcribe"));
        if (m_shown != indicator.visibility) {
            m_shown = indicator.visibility;
            append("DictationController > Indicator", m_shown);
        }
    }

    QStringList m_lines;
    QString m_shown;
    qsizetype m_actions = 0;
    qsizetype m_heard = 0;
    qsizetype m_loads = 0;
    std::size_t m_transcriptions = 0;
};

} // namespace

// docs/pictures/dictation.txt is what tools/draw-architecture draws. TULVANE_UPDATE=1 writes it anew.
TEST_F(DictationSequence, IsWhatTheDocumentationDraws)
{
    pressHotkey();
    speak();
    pressHotkey();
    EXPECT_EQ(phase(), QStringLiteral("inserting"));
    programReads();
    advance(3s);
    note("DictationController > DictationController", QStringLiteral("ready for the next one"));

    QFile file(sourceFolder() + QStringLiteral("/docs/pictures/dictation.txt"));
    if (qEnvironmentVariableIsSet("TULVANE_UPDATE")) {
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(lines().join(u'\n').toUtf8() + '\n');
        return;
    }
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(lines().join(u'\n') + u'\n', QString::fromUtf8(file.readAll()));
}

} // namespace tulvane::test
