#pragma once

#include <chrono>
#include <cstddef>
#include <memory>
#include <optional>
#include <string>

namespace skyhop {

// The links between the programs of the suite, independent of the operating system. Each program is
// an application with a name and serves topics. Another program opens a conversation with one of
// its topics, executes commands on it, requests the values of its items and receives their changes.
//
// Texts are UTF-8 without zero bytes. A back end whose peers use another encoding converts them,
// with "?" for characters that the encoding lacks. No back end sends bytes that are not UTF-8
// unchanged. Texts that arrive are UTF-8 too, but a peer may send any content.
//
// Everything happens on one thread, the one that runs the window's message loop. Callbacks run
// within that loop and, for back ends that run the loop while they wait, within Connect and
// Request; never within Execute, Advise, Publish or a destructor.

/// A topic that this program serves.
class LinkTopic {
 public:
  /// The longest command in bytes; a back end refuses longer ones before it gets here.
  static constexpr std::size_t kLongestCommand = std::size_t{1} << 20U;

  virtual ~LinkTopic() = default;

  /// A peer executes `command`. The transaction is accepted whatever the result is. A back end may
  /// answer the peer before this is called. Must not throw and must not wait for a peer.
  virtual void Execute(const std::string& command) = 0;
  /// The value of an item; nothing when the topic has no such item. Must not throw.
  [[nodiscard]] virtual std::optional<std::string> Request(const std::string& item) = 0;
};

/// Receives the events of a conversation. Any of its functions may destroy the conversation.
class LinkListener {
 public:
  virtual ~LinkListener() = default;
  /// The value of an advised item: first its value when the advise begins, then each new one.
  virtual void Changed(const std::string& item, const std::string& value) = 0;
  /// The peer ended the conversation, died or stopped answering. The last call; not made when this
  /// program ends the conversation.
  virtual void Closed() = 0;
};

/// A conversation that this program opened. Destroying it ends it; commands that were sent before
/// still arrive.
class LinkConversation {
 public:
  virtual ~LinkConversation() = default;

  /// Sends a command and does not wait. Commands arrive in the order sent; a peer that does not
  /// take one within kSlowAnswer counts as closed. Does nothing once the conversation is closed.
  virtual void Execute(const std::string& command) = 0;
  /// Asks for an item's value and waits at most kLongestWait. Throws Error kNoLinkPartner (closed,
  /// no such item) or kLinkTimedOut.
  [[nodiscard]] virtual std::string Request(const std::string& item) = 0;
  /// Reports the item's value to the listener now and whenever it changes. Reports nothing for an
  /// item that the topic does not have.
  virtual void Advise(const std::string& item) = 0;
  [[nodiscard]] virtual bool Open() const = 0;
};

/// The links of one application, whose name the constructor of the back end takes.
class LinkTransport {
 public:
  /// How long a call may wait for a peer. Three peers that all hang must not freeze the window for
  /// more than a second.
  static constexpr std::chrono::milliseconds kLongestWait{250};
  /// How long an answer may take if no caller waits for it.
  static constexpr std::chrono::milliseconds kSlowAnswer{10'000};

  virtual ~LinkTransport() = default;

  /// Why links cannot be used at all, such as "there is no session bus"; empty when they can.
  [[nodiscard]] virtual std::string Problem() const = 0;

  /// Serves a topic until Unserve or the end of this object; `topic` must live as long. Names
  /// consist of letters, digits and "_". Throws Error kInvalidCall (the name), kPermissionDenied
  /// (another program has the application's name) or kDiskNotReady (links cannot be used).
  virtual void Serve(const std::string& name, LinkTopic& topic) = 0;
  virtual void Unserve(const std::string& name) = 0;
  /// Sends the new value of an item of a served topic to the peers that are linked to it.
  virtual void Publish(const std::string& topic, const std::string& item,
                       const std::string& value) = 0;

  /// Opens a conversation with another application's topic, waiting at most kLongestWait. The
  /// application is never started for it. `listener` must outlive the conversation. Throws Error
  /// kNoLinkPartner (it does not run, it has no such topic, links cannot be used) or kLinkTimedOut.
  [[nodiscard]] virtual std::unique_ptr<LinkConversation> Connect(const std::string& application,
                                                                  const std::string& topic,
                                                                  LinkListener& listener) = 0;

  /// Sends one command to another application's topic and waits at most kLongestWait. A busy
  /// application gets the command later, when it answers. Throws like Connect if it is clear at
  /// once that no application will get the command.
  virtual void Tell(const std::string& application, const std::string& topic,
                    const std::string& command);
};

}  // namespace skyhop
