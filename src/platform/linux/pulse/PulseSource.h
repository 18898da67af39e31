#pragma once

#include <QByteArray>
#include <QString>

#include <pulse/channelmap.h>
#include <pulse/sample.h>

namespace tulvane {

/// A microphone of the sound server.
struct PulseSource {
    QByteArray name;     ///< the server's key for it
    QString description; ///< for people
    pa_sample_spec hardware{};
    pa_channel_map channels{};
};

} // namespace tulvane
