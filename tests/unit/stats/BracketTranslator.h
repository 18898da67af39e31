#pragma once

#include <QCoreApplication>
#include <QTranslator>

namespace tulvane::test {

/// While it lives, every text of the program is answered in brackets, so that a test sees which pieces of a
/// text were asked for.
class BracketTranslator final : public QTranslator {
public:
    BracketTranslator() { QCoreApplication::installTranslator(this); }
    BracketTranslator(const BracketTranslator&) = delete;
    BracketTranslator& operator=(const BracketTranslator&) = delete;
    ~BracketTranslator() override { QCoreApplication::removeTranslator(this); }

    [[nodiscard]] bool isEmpty() const override { return false; }
    [[nodiscard]] QString translate(const char* context, const char* source, const char*, int) const override
    {
        return qstrcmp(context, "tulvane") == 0 ? u'[' + QString::fromUtf8(source) + u']' : QString();
    }
};

} // namespace tulvane::test
