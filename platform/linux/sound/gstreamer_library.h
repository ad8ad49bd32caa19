// Brings GStreamer up without its registry: only the plugins that a chain asks for are loaded, from their files. So the
// first start on a machine needs no scan of every plugin there is, and no start reads the list of all. Knows no chain.
#pragma once

#include <gst/gst.h>

#include <memory>

namespace cardsong::sound {

struct GstObjectDeleter {
    void operator()(void* object) const { gst_object_unref(object); }
};
using ElementPtr = std::unique_ptr<GstElement, GstObjectDeleter>;

// Once per process, however many ask; thread-safe. False when GStreamer cannot start.
bool StartGstreamer();

// A new element of `factory`, from the plugin file libgst<plugin>.so; null when it is not installed. `plugin` null:
// from any plugin, found by a slow look through all of them. Thread-safe. Owned by the caller.
ElementPtr MakeElement(const char* factory, const char* plugin);

// The Debian package that holds a plugin.
const char* PackageOf(const char* plugin);

} // namespace cardsong::sound
