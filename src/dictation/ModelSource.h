#pragma once

#include <QObject>
#include <QString>

#include <optional>

namespace tulvane {

/// Where the session gets the speech model's file from: the model manager in the program, one named file on
/// the command line. Main thread.
class ModelSource : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

    /// The selected model's file; none while it has not been downloaded.
    [[nodiscard]] virtual std::optional<QString> readyFile() const = 0;

Q_SIGNALS:
    /// Something about the models' states changed; `readyFile` may answer otherwise now.
    void statesChanged();
};

/// A model file that was named and is simply there.
class FixedModelSource final : public ModelSource {
    Q_OBJECT

public:
    explicit FixedModelSource(const QString& file, QObject* parent = nullptr)
        : ModelSource(parent),
          m_file(file)
    {
    }
    [[nodiscard]] std::optional<QString> readyFile() const override { return m_file; }

private:
    QString m_file;
};

} // namespace tulvane
