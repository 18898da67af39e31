#include <support/ui/QmlComplaints.h>

#include <QStringList>
#include <QtGlobal>

namespace tulvane::test {

namespace {

QStringList complaints;
QtMessageHandler previous = nullptr;

void note(QtMsgType level, const QMessageLogContext& context, const QString& text)
{
    if (level != QtDebugMsg && level != QtInfoMsg && text.contains(QStringLiteral(".qml:")))
        complaints.append(text);
    previous(level, context, text);
}

} // namespace

void QmlComplaints::install()
{
    previous = qInstallMessageHandler(note);
    testing::UnitTest::GetInstance()->listeners().Append(new QmlComplaints);
}

void QmlComplaints::OnTestStart(const testing::TestInfo& /*test*/)
{
    complaints.clear();
}

void QmlComplaints::OnTestEnd(const testing::TestInfo& /*test*/)
{
    for (const QString& complaint : std::as_const(complaints))
        ADD_FAILURE() << qPrintable(complaint);
}

} // namespace tulvane::test
