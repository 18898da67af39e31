#pragma once

#include <ports/UserDefaults.h>

#include <QHash>
#include <QList>

#include <memory>
#include <optional>
#include <utility>

namespace tulvane {

/// User defaults in memory. Two objects over one store are two processes that share a domain.
class FakeUserDefaults final : public UserDefaults {
public:
    /// What would be on disk: domains by name.
    using Store = QHash<QString, QVariantMap>;
    using Write = std::pair<QString, QVariant>;

    static inline const QString domainName = QStringLiteral("com.dunio.Tulvane");

    FakeUserDefaults() : FakeUserDefaults(std::make_shared<Store>()) {}
    explicit FakeUserDefaults(std::shared_ptr<Store> store) : m_store(std::move(store)) {}

    [[nodiscard]] QVariant value(const QString& key) const override;
    Result<void, DefaultsError> set(const QString& key, const QVariant& value) override;
    Result<void, DefaultsError> remove(const QString& key) override;
    [[nodiscard]] Result<QVariantMap, DefaultsError> domain(const QString& name) const override;
    void setTroubleHandler(const TroubleHandler& handler) override;

    /// From now on every write fails with the error; without one, writes succeed again.
    void failWrites(const std::optional<DefaultsError>& error) { m_writeError = error; }
    /// From now on reading that domain by name fails with the error.
    void failDomain(const QString& name, const DefaultsError& error) { m_domainErrors.insert(name, error); }
    /// Tells the program of trouble, as a damaged file would.
    void tell(const DefaultsError& trouble);
    /// Every write that was asked for, oldest first; an invalid value is a removal.
    [[nodiscard]] QList<Write> writes() const { return m_writes; }

private:
    Result<void, DefaultsError> write(const QString& key, const QVariant& value);

    std::shared_ptr<Store> m_store;
    QVariantMap m_unsaved; ///< what failed writes left; an invalid value is a removal
    std::optional<DefaultsError> m_writeError;
    QHash<QString, DefaultsError> m_domainErrors;
    TroubleHandler m_troubleHandler;
    QList<DefaultsError> m_untold;
    QList<Write> m_writes;
};

} // namespace tulvane
