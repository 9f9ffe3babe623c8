#pragma once

#include <gio/gio.h>

#include <memory>
#include <string>

namespace skyhop::platform {

struct GObjectUnref {
  void operator()(gpointer object) const { g_object_unref(object); }
};
template <class Object>
using GObjectPointer = std::unique_ptr<Object, GObjectUnref>;

struct GVariantUnref {
  void operator()(GVariant* variant) const { g_variant_unref(variant); }
};
using GVariantPointer = std::unique_ptr<GVariant, GVariantUnref>;

struct GErrorFree {
  void operator()(GError* error) const { g_error_free(error); }
};
using GErrorPointer = std::unique_ptr<GError, GErrorFree>;

/// A value that a registration with GLib owns. GLib frees it through Free.
template <class Value>
struct GBox {
  Value value;

  static gpointer Make(Value value) { return new GBox{std::move(value)}; }
  static Value& Of(gpointer box) { return static_cast<GBox*>(box)->value; }
  static void Free(gpointer box) { delete static_cast<GBox*>(box); }
};

}  // namespace skyhop::platform
