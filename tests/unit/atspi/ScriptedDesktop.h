#pragma once

#include <platform/linux/atspi/Accessible.h>
#include <support/PrivateBus.h>

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QSet>
#include <QStringList>

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

namespace tulvane::test {

/// How a scripted element takes a text that is written into it.
enum class OnInsert {
    insert,
    ignore,
    later,      ///< at the third time that its text is read
    refuse,     ///< and says so
    insertPart, ///< the first half of it
    cutEnd,     ///< and drops the end of the whole, so that it is no longer than before
    overwrite,  ///< the selection goes with it
    upperCase,
};

/// An object of a scripted program.
struct ScriptedObject {
    QList<Accessible> children;
    QList<AccessibleStates::State> states;
    quint32 role = static_cast<quint32>(AccessibleRole::text);
    QStringList interfaces{accessibleInterfaces::accessible};
    std::optional<int> childCount; ///< where it is not the number of the children
    QSet<QString> silent;          ///< methods and properties that nobody answers
    QSet<QString> refusing;        ///< methods that answer with an error

    QString text;
    int caret = 0; ///< in UTF-16 units, as the selection
    std::optional<std::pair<int, int>> selection;
    OnInsert onInsert = OnInsert::insert;
    bool removes = true; ///< whether it lets go of any text

    void set(AccessibleStates::State state, bool on = true)
    {
        states.removeAll(state);
        if (on)
            states.append(state);
    }
};

/// A program on the accessibility bus, answering as its objects say. Main thread.
class ScriptedProgram final : public QDBusVirtualObject {
public:
    ScriptedProgram(const QString& bus, const QString& toolkit);
    ScriptedProgram(const ScriptedProgram&) = delete;
    ScriptedProgram& operator=(const ScriptedProgram&) = delete;
    ~ScriptedProgram() override;

    [[nodiscard]] QString service() const { return m_connection.baseService(); }
    [[nodiscard]] QDBusConnection connection() const { return m_connection; }
    [[nodiscard]] Accessible at(const QString& path) const { return {service(), path}; }
    [[nodiscard]] ScriptedObject& object(const QString& path) { return m_objects[path]; }
    /// An event of one of its windows, "Activate".
    void tell(const QString& event, const QString& path);
    /// The program leaves the bus, as when it crashes.
    void vanish();

    /// Called at each call, before it is answered.
    std::function<void(const QString& method)> onCall;
    /// The names of the methods that were called, oldest first.
    QStringList called;
    /// The address that it gives as that of the accessibility bus, where it is asked for it.
    QString accessibilityAddress;
    /// It answers nobody.
    bool frozen = false;
    /// What a request to insert gave as the length.
    int insertedLength = 0;

    QString introspect(const QString&) const override { return {}; }
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override;

private:
    std::optional<QVariantList> answer(const QString& method, const QVariantList& arguments,
                                       ScriptedObject& object);
    std::optional<QVariantList> answerAboutText(const QString& method, const QVariantList& arguments,
                                                ScriptedObject& object);
    bool edit(const QString& method, const QVariantList& arguments, ScriptedObject& object);
    bool insert(const QVariantList& arguments, ScriptedObject& object);
    QVariant property(const QString& name, const ScriptedObject& object) const;

    QString m_name;
    QString m_toolkit;
    QDBusConnection m_connection;
    std::map<QString, ScriptedObject> m_objects;
    std::optional<std::pair<int, QString>> m_later; ///< what comes after so many more readings
};

/// A session with an accessibility bus and its registry; all of it, but for the bus daemon, in this process.
class ScriptedDesktop final {
public:
    ScriptedDesktop();
    ScriptedDesktop(const ScriptedDesktop&) = delete;
    ScriptedDesktop& operator=(const ScriptedDesktop&) = delete;
    ~ScriptedDesktop();

    [[nodiscard]] QString sessionBus() const { return m_bus.address(); }
    [[nodiscard]] ScriptedProgram& registry() { return *m_registry; }
    /// A program without windows, known to the registry.
    ScriptedProgram& addProgram(const QString& toolkit = QStringLiteral("gtk"));
    /// A program with a window in front, and in it this field, which has the focus: "ab|c", or "a[b]c".
    ScriptedProgram& addField(const QString& marked, const QString& toolkit = QStringLiteral("gtk"));
    /// The bus is gone at once.
    void killBus();

    static inline const QString window = QStringLiteral("/window");
    static inline const QString field = QStringLiteral("/field");

private:
    PrivateBus m_bus;
    std::unique_ptr<ScriptedProgram> m_registry;
    std::vector<std::unique_ptr<ScriptedProgram>> m_programs;
};

/// What a field shows, marked as `addField` takes it.
[[nodiscard]] QString marked(const ScriptedObject& field);

} // namespace tulvane::test
