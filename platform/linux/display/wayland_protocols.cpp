// What wayland-scanner makes of the protocols' descriptions is C. Behind their headers it is C++ just as well, and the
// project needs one compiler.
#include <xdg-activation-v1-client-protocol.h>
#include <xdg-decoration-unstable-v1-client-protocol.h>
#include <xdg-shell-client-protocol.h>

#include <xdg-activation-v1-protocol.c>
#include <xdg-decoration-unstable-v1-protocol.c>
#include <xdg-shell-protocol.c>
