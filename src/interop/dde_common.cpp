#include "interop/dde_common.h"

#include <limits>
#include <optional>

#include "common/errors.h"
#include "common/numbers.h"
#include "common/text.h"
#include "interop/suite.h"

namespace skyhop::DDECommon {
namespace {

constexpr std::string_view kEndOfRecord = "<eor>";
constexpr int kRoleDigits = 3;

struct Role {
  const char* name;
  const char* nickname;
};

constexpr std::array<Role, 7> kRoles = {{
    {"XcvrControlServer", "TU"},
    {"LogServer", "AV"},
    {"QSLInfoServer", "QU"},
    {"TesseraServer", "TS"},
    {"SpotServer", "GL"},
    {"PropagationServer", "SH"},
    {"ModeServer", "CH"},
}};

constexpr Role kNoRole = {"", ""};

const Role& RoleAt(std::int16_t index) {
  if (index < 0 || index >= static_cast<std::int16_t>(kRoles.size())) return kNoRole;
  return kRoles.at(static_cast<std::size_t>(index));
}

/// Bytes of the first `count` characters, of all when there are fewer.
std::size_t SizeOfCharacters(std::string_view text, std::int16_t count) {
  std::size_t size = 0;
  for (; count > 0 && size < text.size(); --count) size += CharacterSize(text.substr(size));
  return size;
}

std::size_t CharacterCount(std::string_view text) {
  std::size_t count = 0;
  for (; !text.empty(); text.remove_prefix(CharacterSize(text))) ++count;
  return count;
}

/// A field's length; nothing if the text is not a length.
std::optional<std::int16_t> LengthIn(std::string_view text) {
  const std::optional<double> number = WholeNumberText(text);
  if (!number) return std::nullopt;
  try {
    const std::int16_t length = RoundToInteger(*number);
    if (length >= 0) return length;
  } catch (const Error&) {
    // Beyond 16 bits.
  }
  return std::nullopt;
}

}  // namespace

std::string Records::EncodeField(const std::string& name, const std::string& value) {
  return diagnostics_->Trap("DDECommon.EncodeField", std::string(), [&]() -> std::string {
    if (name.empty()) return {};
    const std::size_t length = CharacterCount(value);
    if (length > std::size_t{std::numeric_limits<std::int16_t>::max()}) {
      throw Error(errors::kOverflow, "the value of the field \"" + name + "\" has " +
                                         std::to_string(length) + " characters");
    }
    return "<" + name + ":" + std::to_string(length) + ">" + value;
  });
}

void Records::Add(std::string_view name, std::string_view value) {
  if (count_ == kCapacity) throw Error(errors::kSubscript, "the record has more than 100 fields");
  tokens_.at(static_cast<std::size_t>(count_)) = {std::string(name), std::string(value)};
  ++count_;
}

void Records::ParseRecord(std::string_view record) {
  diagnostics_->Trap("DDECommon.ParseRecord", [&] {
    count_ = 0;
    for (std::string_view rest = record; !rest.empty();) {
      const std::size_t open = rest.find('<');
      if (open == std::string_view::npos) return;
      rest.remove_prefix(open);
      if (EqualsIgnoringCase(rest.substr(0, kEndOfRecord.size()), kEndOfRecord)) return;
      const std::size_t close = rest.find('>');
      if (close == std::string_view::npos) return;
      const std::string_view tag = rest.substr(1, close - 1);
      const std::size_t colon = tag.find(':');
      if (colon == std::string_view::npos) return;
      rest.remove_prefix(close + 1);
      const std::optional<std::int16_t> length = LengthIn(tag.substr(colon + 1));
      const std::size_t size = SizeOfCharacters(rest, length.value_or(0));
      Add(tag.substr(0, colon), rest.substr(0, size));
      if (!length) return;
      rest.remove_prefix(size);
    }
  });
}

Token Records::GetToken(std::int16_t position) {
  return diagnostics_->Trap("DDECommon.GetToken", Token(), [&] {
    if (position < 1) {
      throw Error(errors::kSubscript, "there is no field " + std::to_string(position));
    }
    return position <= count_ ? tokens_.at(static_cast<std::size_t>(position - 1)) : Token();
  });
}

std::string ServerName(std::int16_t role) {
  return RoleAt(role).name;
}

std::string ServerNickName(std::int16_t role) {
  return RoleAt(role).nickname;
}

std::string OwnCommand(std::string_view word, std::string_view argument) {
  std::string command = PaddedNumber(role::kPropagation, kRoleDigits);
  return command.append(word).append(argument);
}

void Iconify(OpenWindows& windows, Diagnostics& diagnostics) {
  diagnostics.Trap("DDECommon.Iconify", [&] {
    for (Window* window : windows.All()) window->Minimise();
  });
}

void Activate(Window& window, Diagnostics& diagnostics) {
  diagnostics.Trap("DDECommon.Activate", [&] { window.Activate(); });
}

}  // namespace skyhop::DDECommon
