#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "common/diagnostics.h"

namespace skyhop::DDECommon {

/// One field of a record.
struct Token {
  std::string name;
  std::string value;

  friend bool operator==(const Token&, const Token&) = default;
};

/// Tagged-field records, the texts that the applications of the suite exchange: fields "<name:n>"
/// followed by a value of n characters, one after the other, with an optional "<eor>" at the end.
/// The length alone delimits a value, which may contain any character.
///
/// A character is a code point; a byte that is not UTF-8 counts as one. So lengths agree with those
/// of peers that use one byte or one wide character for each.
class Records {
 public:
  static constexpr std::int16_t kCapacity = 100;

  /// `diagnostics` must outlive this object.
  explicit Records(Diagnostics& diagnostics) : diagnostics_(&diagnostics) {}

  /// "<name:length>value". Empty when the name is empty, and, reported as Error 6, when the value
  /// has more than 32767 characters.
  [[nodiscard]] std::string EncodeField(const std::string& name, const std::string& value);

  /// Replaces the tokens by those of `record`. Text that cannot be read ends the record; the tokens
  /// before it stay. A field whose length is no number from 0 to 32767 is kept with an empty value
  /// and is the last one. A fractional length is rounded, halves to the even neighbour. A 101st
  /// field is Error 9.
  void ParseRecord(std::string_view record);

  /// The token at `position`, counted from 1; beyond the last one it is empty. A position below 1
  /// is Error 9 and yields an empty token.
  [[nodiscard]] Token GetToken(std::int16_t position);

 private:
  void Add(std::string_view name, std::string_view value);

  Diagnostics* diagnostics_;
  std::array<Token, kCapacity> tokens_;
  std::int16_t count_ = 0;
};

/// Name of a role in the suite, 0 to 6; empty for any other index.
[[nodiscard]] std::string ServerName(std::int16_t role);
/// Its nickname of two letters; empty for any other index.
[[nodiscard]] std::string ServerNickName(std::int16_t role);

/// `command` as this program sends it: its own role in three digits, the word and the argument.
[[nodiscard]] std::string OwnCommand(std::string_view word, std::string_view argument = {});

/// A window of the program as the commands of peers use it.
class Window {
 public:
  virtual ~Window() = default;
  virtual void Minimise() = 0;
  /// Restores it when it is minimised and brings it to the front.
  virtual void Activate() = 0;
};

/// The program's open windows, first to last.
class OpenWindows {
 public:
  virtual ~OpenWindows() = default;
  [[nodiscard]] virtual std::vector<Window*> All() = 0;
};

/// Minimises every open window.
void Iconify(OpenWindows& windows, Diagnostics& diagnostics);

/// Makes `window` the active one.
void Activate(Window& window, Diagnostics& diagnostics);

}  // namespace skyhop::DDECommon
