#pragma once

#include <QString>

namespace tulvane {

class UserDefaults;

/// Brings over what the earlier product kept: its preferences, and its folder of models and statistics. Once
/// in the life of a user's account, whatever came of it. Main thread; blocks for as long as the file system
/// takes, which is long only where files have to go to another disk.
class Migration final {
public:
    static inline const QString doneKey = QStringLiteral("didMigrateFromArvenscribe");
    static inline const QString oldDomain = QStringLiteral("com.dunio.Arvenscribe");
    static inline const QString oldFolder = QStringLiteral("Arven Scribe");
    static inline const QString newFolder = QStringLiteral("Tulvane");
    static inline const QString modelsFolder = QStringLiteral("Models");

    /// The user's folder for applications' data, in which both products' folders are.
    [[nodiscard]] static QString standardParent();

    /// `parent` holds the folders. `defaults` outlives this object.
    Migration(UserDefaults& defaults, const QString& parent);

    /// Never fails: what goes wrong is logged, and the rest goes on.
    void run();

private:
    void copyPreferences();
    void moveFolder() const;

    UserDefaults& m_defaults;
    QString m_parent;
};

} // namespace tulvane
