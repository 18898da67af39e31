#pragma once

class QObject;
class QQmlPropertyMap;

namespace tulvane {

class AppSettings;

/// The values of all preferences as properties for QML, each under its key and in stored form. What QML
/// writes is assigned; a value of another form is refused, and the property goes back. Main thread.
[[nodiscard]] QQmlPropertyMap* settingValues(AppSettings& settings, QObject* parent);

} // namespace tulvane
