// No room but a session sees an adapter, wherever in the tree the file lies.
#include <platform/linux/session/Session.h>
