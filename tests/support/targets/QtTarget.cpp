// A Qt program with one field that has the focus, and which tells what arrived in it.
//     qt-target line|text
// Speaks as gtk_target.py does: lines of JSON.
#include <QApplication>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLineEdit>
#include <QPushButton>
#include <QSocketNotifier>
#include <QTextEdit>
#include <QVBoxLayout>

#include <unistd.h>

#include <array>
#include <cstdio>

namespace {

void say(const QJsonObject& message)
{
    const QByteArray line = QJsonDocument(message).toJson(QJsonDocument::Compact) + '\n';
    std::fwrite(line.constData(), 1, static_cast<std::size_t>(line.size()), stdout);
    std::fflush(stdout);
}

/// The window; says when it has the focus.
class Window final : public QWidget {
public:
    explicit Window(bool singleLine)
    {
        auto* layout = new QVBoxLayout(this);
        QWidget* field = nullptr;
        if (singleLine)
            field = m_line = new QLineEdit;
        else
            field = m_text = new QTextEdit;
        field->setObjectName(QStringLiteral("field"));
        layout->addWidget(field);
        // Somewhere else for a stray key to go.
        layout->addWidget(new QPushButton(QStringLiteral("&Other")));
        field->setFocus();
    }

    void answer(const QJsonObject& request)
    {
        QJsonObject answer{{QStringLiteral("id"), request[QStringLiteral("id")]}};
        const QString what = request[QStringLiteral("do")].toString();
        if (what == u"report") {
            const QWidget* focus = QApplication::focusWidget();
            answer[QStringLiteral("text")] = m_line != nullptr ? m_line->text() : m_text->toPlainText();
            answer[QStringLiteral("focus")] = focus != nullptr ? focus->objectName() : QString();
        } else if (what == u"clear") {
            m_line != nullptr ? m_line->clear() : m_text->clear();
        }
        say(answer);
    }

protected:
    void changeEvent(QEvent* event) override
    {
        if (event->type() == QEvent::ActivationChange && isActiveWindow())
            say({{QStringLiteral("event"), QStringLiteral("ready")}});
        QWidget::changeEvent(event);
    }

private:
    QLineEdit* m_line = nullptr;
    QTextEdit* m_text = nullptr;
};

} // namespace

int main(int argc, char** argv)
{
    const QApplication app(argc, argv);
    Window window(QApplication::arguments().value(1) == u"line");
    window.show();
    QByteArray rest;
    QSocketNotifier requests(STDIN_FILENO, QSocketNotifier::Read);
    QObject::connect(&requests, &QSocketNotifier::activated, &window, [&] {
        std::array<char, 65536> bytes{};
        const ssize_t length = read(STDIN_FILENO, bytes.data(), bytes.size());
        if (length <= 0) {
            QApplication::quit();
            return;
        }
        rest.append(bytes.data(), length);
        for (qsizetype end = rest.indexOf('\n'); end >= 0; end = rest.indexOf('\n')) {
            window.answer(QJsonDocument::fromJson(rest.left(end)).object());
            rest.remove(0, end + 1);
        }
    });
    return QApplication::exec();
}
