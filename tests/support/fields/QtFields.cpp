// The same program as gtk_fields.py with Qt's widgets, and offsets in UTF-16 units.

#include <QApplication>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLabel>
#include <QLineEdit>
#include <QSocketNotifier>
#include <QTextEdit>
#include <QVBoxLayout>
#include <QWidget>

#include <algorithm>
#include <cstdio>
#include <memory>

namespace {

constexpr int longest = 12;

class Field {
public:
    Field() = default;
    Field(const Field&) = delete;
    Field& operator=(const Field&) = delete;
    virtual ~Field() = default;

    virtual QWidget& widget() = 0;
    virtual void select(int start, int end) = 0;
    virtual QJsonObject state() const = 0;
};

QJsonObject described(const QString& text, int start, int end, int caret)
{
    return {{QStringLiteral("text"), text},
            {QStringLiteral("start"), start},
            {QStringLiteral("end"), end},
            {QStringLiteral("caret"), caret}};
}

class Line final : public Field {
public:
    Line(const QString& kind, const QString& text) : m_edit(text)
    {
        if (kind == u"password")
            m_edit.setEchoMode(QLineEdit::Password);
        m_edit.setReadOnly(kind == u"readOnly");
        if (kind == u"short")
            m_edit.setMaxLength(longest);
        if (kind == u"ignoring")
            QObject::connect(&m_edit, &QLineEdit::textChanged, &m_edit,
                             [this, text] { m_edit.setText(text); });
    }
    QWidget& widget() override { return m_edit; }
    void select(int start, int end) override
    {
        m_edit.setCursorPosition(start);
        if (end > start)
            m_edit.setSelection(start, end - start);
    }
    QJsonObject state() const override
    {
        const int caret = m_edit.cursorPosition();
        const bool some = m_edit.hasSelectedText();
        return described(m_edit.text(), some ? m_edit.selectionStart() : caret,
                         some ? m_edit.selectionEnd() : caret, caret);
    }

private:
    QLineEdit m_edit;
};

class Area final : public Field {
public:
    explicit Area(const QString& text) { m_edit.setPlainText(text); }
    QWidget& widget() override { return m_edit; }
    void select(int start, int end) override
    {
        QTextCursor cursor = m_edit.textCursor();
        cursor.setPosition(start);
        cursor.setPosition(end, QTextCursor::KeepAnchor);
        m_edit.setTextCursor(cursor);
    }
    QJsonObject state() const override
    {
        const QTextCursor cursor = m_edit.textCursor();
        return described(m_edit.toPlainText(), cursor.selectionStart(), cursor.selectionEnd(),
                         cursor.position());
    }

private:
    QTextEdit m_edit;
};

class Program final {
public:
    Program()
    {
        m_layout.addWidget(new QLabel(QStringLiteral("a label")));
        m_layout.addWidget(new QLineEdit(QStringLiteral("another field")));
        m_window.resize(400, 200);
        m_window.show();
        QObject::connect(qApp, &QApplication::focusChanged, &m_window, [this] { answerWhenActive(); });
        QObject::connect(&m_input, &QSocketNotifier::activated, &m_window, [this] { readCommand(); });
    }

private:
    void readCommand()
    {
        char buffer[65536];
        if (std::fgets(buffer, sizeof buffer, stdin) == nullptr) {
            QApplication::quit();
            return;
        }
        const QJsonObject command = QJsonDocument::fromJson(QByteArray(buffer)).object();
        if (command.contains(u"show")) {
            show(command);
        } else if (command.contains(u"front")) {
            m_window.raise();
            m_window.activateWindow();
            waitUntilActive();
        } else {
            answer(m_field->state());
        }
    }
    void show(const QJsonObject& command)
    {
        const QString kind = command.value(u"show").toString();
        const QString text = command.value(u"text").toString();
        m_field = nullptr;
        if (kind == u"area")
            m_field = std::make_unique<Area>(text);
        else
            m_field = std::make_unique<Line>(kind, text);
        m_layout.addWidget(&m_field->widget());
        m_field->widget().show();
        m_field->widget().setFocus();
        m_field->select(command.value(u"start").toInt(), command.value(u"end").toInt());
        waitUntilActive();
    }
    void waitUntilActive()
    {
        m_waiting = true;
        answerWhenActive();
    }
    void answerWhenActive()
    {
        if (!m_waiting || !m_window.isActiveWindow() || (m_field && !m_field->widget().hasFocus()))
            return;
        m_waiting = false;
        answer({});
    }
    static void answer(const QJsonObject& state)
    {
        const QByteArray line = QJsonDocument(state).toJson(QJsonDocument::Compact);
        std::fputs(line.constData(), stdout);
        std::fputc('\n', stdout);
        std::fflush(stdout);
    }

    QWidget m_window;
    QVBoxLayout m_layout{&m_window};
    std::unique_ptr<Field> m_field;
    QSocketNotifier m_input{0, QSocketNotifier::Read};
    bool m_waiting = false;
};

} // namespace

int main(int argc, char** argv)
{
    // Commands are read as they come, not as many as are there.
    std::setvbuf(stdin, nullptr, _IONBF, 0);
    QApplication application(argc, argv);
    const Program program;
    return QApplication::exec();
}
