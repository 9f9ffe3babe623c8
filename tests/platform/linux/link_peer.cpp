// A peer application on the session bus, controlled through its standard input. It uses D-Bus
// directly, not the program's own link code, so it behaves like any other program.

#include <gio/gio.h>
#include <gio/gunixinputstream.h>

#include <cstdlib>
#include <iostream>
#include <map>
#include <string>
#include <vector>

#include "link_words.h"

namespace {

using skyhop::testing::Line;
using skyhop::testing::Words;
using Texts = std::vector<std::string>;

constexpr const char* kInterface = "org.marlo.Link";
constexpr const char* kXml =
    "<node><interface name='org.marlo.Link'>"
    "<method name='Execute'><arg type='s' direction='in'/></method>"
    "<method name='Request'><arg type='s' direction='in'/><arg type='s' direction='out'/></method>"
    "<signal name='Changed'><arg type='s'/><arg type='s'/></signal></interface></node>";

GDBusConnection* connection = nullptr;
GMainLoop* loop = nullptr;
std::map<std::string, std::map<std::string, std::string>> topics;
int unanswered = 0;
int unsent = 0;
Texts flood;  ///< the order whose command remains to be sent `unsent` times

void Say(const Texts& words) {
  std::cout << Line(words) << std::flush;
}

void OnCall(GDBusConnection*, const char*, const char* path, const char*, const char* method,
            GVariant* arguments, GDBusMethodInvocation* call, gpointer) {
  const char* text = nullptr;
  g_variant_get(arguments, "(&s)", &text);
  if (std::string(method) == "Execute") {
    Say({"executed", text});
    g_dbus_method_invocation_return_value(call, nullptr);
    return;
  }
  const auto& items = topics[path + 1];
  const auto found = items.find(text);
  if (found == items.end()) {
    g_dbus_method_invocation_return_dbus_error(call, "com.example.Nothing", "no such item");
  } else {
    g_dbus_method_invocation_return_value(call, g_variant_new("(s)", found->second.c_str()));
  }
}

void Serve(const std::string& application, const Texts& words) {
  const bool known = topics.contains(words.at(1));
  auto& items = topics[words.at(1)];
  for (std::size_t i = 2; i + 1 < words.size(); i += 2) items[words[i]] = words[i + 1];
  if (known) return;
  static GDBusNodeInfo* const node = g_dbus_node_info_new_for_xml(kXml, nullptr);
  static const GDBusInterfaceVTable methods = {OnCall, nullptr, nullptr, {}};
  g_dbus_connection_register_object(connection, ("/" + words.at(1)).c_str(), node->interfaces[0],
                                    &methods, nullptr, nullptr, nullptr);
  g_variant_unref(g_dbus_connection_call_sync(
      connection, "org.freedesktop.DBus", "/", "org.freedesktop.DBus", "RequestName",
      g_variant_new("(su)", ("org.marlo." + application).c_str(), 4U), nullptr,
      G_DBUS_CALL_FLAGS_NONE, -1, nullptr, nullptr));
}

void Emit(const std::string& topic, const char* signal, GVariant* values) {
  g_dbus_connection_emit_signal(connection, nullptr, ("/" + topic).c_str(), kInterface, signal,
                                values, nullptr);
}

void OnValue(GObject*, GAsyncResult* result, gpointer) {
  GVariant* const reply = g_dbus_connection_call_finish(connection, result, nullptr);
  const char* text = "(error)";
  if (reply != nullptr) g_variant_get(reply, "(&s)", &text);
  Say({"value", text});
}

void OnTaken(GObject*, GAsyncResult* result, gpointer);

void Call(const Texts& target, const char* method, GVariant* arguments,
          GAsyncReadyCallback callback) {
  g_dbus_connection_call(connection, ("org.marlo." + target.at(1)).c_str(),
                         ("/" + target.at(2)).c_str(), kInterface, method, arguments, nullptr,
                         G_DBUS_CALL_FLAGS_NO_AUTO_START, 60000, nullptr, callback, nullptr);
}

/// Sends as many messages as the bus allows without answers.
void SendFlood() {
  constexpr int most_unanswered = 100;
  for (; unsent > 0 && unanswered < most_unanswered; --unsent, ++unanswered) {
    Call(flood, "Execute", g_variant_new("(s)", flood.at(3).c_str()), OnTaken);
  }
}

void OnTaken(GObject*, GAsyncResult* result, gpointer) {
  g_dbus_connection_call_finish(connection, result, nullptr);
  --unanswered;
  SendFlood();
  if (unanswered == 0) Say({"taken"});
}

/// Sends messages that no link expects.
void SendGarbage(const Texts& target) {
  const auto execute = [&](GVariant* arguments) { Call(target, "Execute", arguments, OnTaken); };
  unanswered += 5;
  execute(nullptr);
  execute(g_variant_new("(i)", 5));
  execute(g_variant_new("(ss)", "000shutdown", "x"));
  execute(g_variant_new("(s)", std::string((std::size_t{1} << 20U) + 1, 'x').c_str()));
  Call(target, "Nonsense", g_variant_new("(s)", "000shutdown"), OnTaken);
  for (const auto& [topic, items] : topics) {
    Emit(topic, "Changed", nullptr);
    Emit(topic, "Changed", g_variant_new("(si)", "Country", 5));
    Emit(topic, "Changed", g_variant_new("(s)", "Country"));
    Emit(topic, "Nonsense", g_variant_new("(ss)", "Country", "x"));
  }
}

void Obey(const std::string& application, const Texts& words) {
  const std::string& order = words.at(0);
  if (order == "serve") {
    Serve(application, words);
  } else if (order == "publish") {
    topics[words.at(1)][words.at(2)] = words.at(3);
    Emit(words.at(1), "Changed", g_variant_new("(ss)", words.at(2).c_str(), words.at(3).c_str()));
  } else if (order == "execute") {
    ++unanswered;
    Call(words, "Execute", g_variant_new("(s)", words.at(3).c_str()), OnTaken);
  } else if (order == "flood") {
    flood = words;
    unsent = std::atoi(words.at(4).c_str());
    SendFlood();
  } else if (order == "request") {
    Call(words, "Request", g_variant_new("(s)", words.at(3).c_str()), OnValue);
  } else if (order == "garbage") {
    SendGarbage(words);
  }
  Say({"done"});
}

void OnLine(GObject* stream, GAsyncResult* result, gpointer application) {
  auto* const input = G_DATA_INPUT_STREAM(stream);
  char* const line = g_data_input_stream_read_line_finish(input, result, nullptr, nullptr);
  if (line == nullptr) {
    g_main_loop_quit(loop);
    return;
  }
  Obey(static_cast<const char*>(application), Words(line));
  g_free(line);
  g_data_input_stream_read_line_async(input, G_PRIORITY_DEFAULT, nullptr, OnLine, application);
}

}  // namespace

int main(int count, char** arguments) {
  if (count != 2) return 2;
  connection = g_bus_get_sync(G_BUS_TYPE_SESSION, nullptr, nullptr);
  if (connection == nullptr) return 1;
  loop = g_main_loop_new(nullptr, FALSE);
  GDataInputStream* const input = g_data_input_stream_new(g_unix_input_stream_new(0, FALSE));
  g_data_input_stream_read_line_async(input, G_PRIORITY_DEFAULT, nullptr, OnLine, arguments[1]);
  g_main_loop_run(loop);
  return 0;
}
