// The socket of a Wayland compositor, by the rules of libwayland. The library's own way there has no limit: a
// compositor that hangs with a full queue would hold it up for ever.
#pragma once

#include <string>

namespace cardsong::display {

// `name`: of the socket in XDG_RUNTIME_DIR, or its whole path. Waits at most `limitMs` (1 at least) for a place in the
// compositor's queue. Returns the connection, which the caller closes; or -1, and why in `trouble`.
[[nodiscard]] int ConnectToCompositor(const std::string& name, int limitMs, std::string& trouble);

} // namespace cardsong::display
