#include <base/Log.h>

namespace tulvane {

Q_LOGGING_CATEGORY(lcApp, "com.dunio.Tulvane.app")
Q_LOGGING_CATEGORY(lcAudio, "com.dunio.Tulvane.audio")
Q_LOGGING_CATEGORY(lcWhisper, "com.dunio.Tulvane.whisper")
Q_LOGGING_CATEGORY(lcModels, "com.dunio.Tulvane.models")
Q_LOGGING_CATEGORY(lcHotkey, "com.dunio.Tulvane.hotkey")
Q_LOGGING_CATEGORY(lcInsertion, "com.dunio.Tulvane.insertion")
Q_LOGGING_CATEGORY(lcSettings, "com.dunio.Tulvane.settings")

} // namespace tulvane
