// What every room sees: a port, and what the port itself includes.
#include <ports/UserDefaults.h>
