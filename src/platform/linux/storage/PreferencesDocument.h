#pragma once

#include <base/Result.h>

#include <QByteArray>
#include <QString>
#include <QVariant>
#include <QVariantMap>

#include <memory>

namespace tulvane {

/// The content of one domain's file: a JSON object. Keys that no setting has, the order of the keys and the
/// difference between an integer and a floating-point number survive reading and writing.
class PreferencesDocument final {
public:
    /// An empty object.
    PreferencesDocument();
    PreferencesDocument(PreferencesDocument&&) noexcept;
    PreferencesDocument& operator=(PreferencesDocument&&) noexcept;
    PreferencesDocument(const PreferencesDocument&) = delete;
    PreferencesDocument& operator=(const PreferencesDocument&) = delete;
    ~PreferencesDocument();

    /// Reads a file's bytes. A file with nothing but blanks in it is an empty object: nothing can be lost by
    /// writing to it. Anything else that is not one JSON object is an error, with where and why.
    [[nodiscard]] static Result<PreferencesDocument, QString> parse(const QByteArray& text);

    [[nodiscard]] PreferencesDocument copy() const;
    [[nodiscard]] bool isEmpty() const;
    /// Invalid where the key is absent or null.
    [[nodiscard]] QVariant value(const QString& key) const;
    [[nodiscard]] QVariantMap values() const;
    /// `value` is one that `storableValue` gave. A new key goes to the end.
    void set(const QString& key, const QVariant& value);
    void remove(const QString& key);
    /// Indented, one key to a line, UTF-8, ending in a newline.
    [[nodiscard]] QByteArray text() const;

private:
    struct Tree;
    std::unique_ptr<Tree> m_tree;
};

} // namespace tulvane
