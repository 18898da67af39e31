#pragma once

#include <QDBusArgument>
#include <QString>

#include <optional>

namespace tulvane {

// What the input method service sends and takes, as far as an engine that only commits text needs it. Call
// `registerIBusTypes` before any of them goes over a bus.

/// A text without attributes.
struct IBusText {
    QString text;
};

/// An engine, and the component that it comes in: one and the same name.
struct IBusEngineFacts {
    QString name;
    QString title;
};
struct IBusComponentFacts {
    QString busName;
    IBusEngineFacts engine;
};

/// What a text field is for, and hints about what is typed.
struct IBusContentType {
    quint32 purpose = 0;
    quint32 hints = 0;
};

QDBusArgument& operator<<(QDBusArgument& argument, const IBusText& text);
const QDBusArgument& operator>>(const QDBusArgument& argument, IBusText& text);
QDBusArgument& operator<<(QDBusArgument& argument, const IBusEngineFacts& engine);
const QDBusArgument& operator>>(const QDBusArgument& argument, IBusEngineFacts& engine);
QDBusArgument& operator<<(QDBusArgument& argument, const IBusComponentFacts& component);
const QDBusArgument& operator>>(const QDBusArgument& argument, IBusComponentFacts& component);
QDBusArgument& operator<<(QDBusArgument& argument, const IBusContentType& type);
const QDBusArgument& operator>>(const QDBusArgument& argument, IBusContentType& type);

void registerIBusTypes();

/// The name of the engine in what the service answers about it, however many variants are around it.
[[nodiscard]] std::optional<QString> engineNameIn(const QVariant& answer);
/// The value inside of any number of variants.
[[nodiscard]] QVariant withoutVariants(QVariant value);

} // namespace tulvane
