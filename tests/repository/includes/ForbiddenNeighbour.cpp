// A domain room does not see another one that it does not link.
#include <audio/AudioRecorder.h>
