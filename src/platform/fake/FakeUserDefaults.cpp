#include <platform/fake/FakeUserDefaults.h>
#include <ports/DefaultsValue.h>

namespace tulvane {

QVariant FakeUserDefaults::value(const QString& key) const
{
    const auto unsaved = m_unsaved.constFind(key);
    return unsaved != m_unsaved.cend() ? *unsaved : m_store->value(domainName).value(key);
}

Result<void, DefaultsError> FakeUserDefaults::set(const QString& key, const QVariant& value)
{
    const std::optional<QVariant> storable = storableValue(value);
    if (!storable)
        return failure(DefaultsError::notStorable(key));
    return write(key, *storable);
}

Result<void, DefaultsError> FakeUserDefaults::remove(const QString& key)
{
    return write(key, QVariant());
}

Result<void, DefaultsError> FakeUserDefaults::write(const QString& key, const QVariant& value)
{
    m_writes.append({key, value});
    m_unsaved.insert(key, value);
    if (m_writeError)
        return failure(*m_writeError);
    QVariantMap& stored = (*m_store)[domainName];
    for (auto item = m_unsaved.cbegin(); item != m_unsaved.cend(); ++item) {
        if (item.value().isValid())
            stored.insert(item.key(), item.value());
        else
            stored.remove(item.key());
    }
    m_unsaved.clear();
    return {};
}

Result<QVariantMap, DefaultsError> FakeUserDefaults::domain(const QString& name) const
{
    const auto error = m_domainErrors.constFind(name);
    if (error != m_domainErrors.cend())
        return failure(*error);
    return m_store->value(name);
}

void FakeUserDefaults::setTroubleHandler(const TroubleHandler& handler)
{
    m_troubleHandler = handler;
    for (const DefaultsError& trouble : std::exchange(m_untold, {}))
        tell(trouble);
}

void FakeUserDefaults::tell(const DefaultsError& trouble)
{
    if (m_troubleHandler)
        m_troubleHandler(trouble);
    else
        m_untold.append(trouble);
}

} // namespace tulvane
