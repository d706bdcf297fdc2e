#pragma once

#include <gio/gio.h>

#include <memory>

namespace orvella {

/// Gives back what GLib handed out.
struct GLibRelease {
    void operator()(GError* error) const { g_error_free(error); }

    void operator()(GHashTable* table) const { g_hash_table_unref(table); }

    void operator()(GVariant* value) const { g_variant_unref(value); }

    void operator()(char* text) const { g_free(text); }

    void operator()(char** texts) const { g_strfreev(texts); }

    template <class Object> void operator()(Object* object) const { g_object_unref(object); }
};

/// Owns a value, an error, a text or one reference to an object of GLib.
template <class T> using GLibPointer = std::unique_ptr<T, GLibRelease>;

} // namespace orvella
