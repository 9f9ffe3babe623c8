#include "common/settings.h"

#include <algorithm>

#include "common/numbers.h"
#include "common/text.h"

namespace skyhop {

bool IsSettingName(std::string_view name) {
  if (name.empty() || name.size() > 255 || IsBlank(name.front()) || IsBlank(name.back()) ||
      name.front() == ';' || name.front() == '#') {
    return false;
  }
  return std::none_of(name.begin(), name.end(), [](char c) {
    return static_cast<unsigned char>(c) < ' ' || c == '[' || c == ']' || c == '=' || c == '\\';
  });
}

namespace Common {
namespace {

constexpr const char* kUninitialized = "~uninitialized~";

}  // namespace

std::string Settings::WorkingText(const std::string& application, const std::string& section,
                                  const std::string& key, const std::string& default_text) const {
  std::string working = kUninitialized;
  try {
    working = store_->Read(application, section, key, default_text);
  } catch (const Error& error) {
    // Only a failure with a negative number keeps the marker.
    if (error.Number() > 0) working = default_text;
  } catch (const std::exception&) {
    working = default_text;
  }
  return working;
}

template <class Value, class Convert, class Format>
Value Settings::Get(const std::string& name, const std::string& label,
                    const std::string& application, const std::string& section,
                    const std::string& key, const std::string& default_text, Convert convert,
                    Format format) const {
  const std::string working = WorkingText(application, section, key, default_text);
  const std::string module = "Common." + name + ", SectionName = " + section + ", Key = " + key +
                             ", theSetting = " + working + ", DefaultValue = " + default_text;
  return diagnostics_->Trap(module, Value{}, [&] {
    Value result = convert(default_text);
    try {
      result = convert(working);
    } catch (const Error&) {
      // The stored text does not convert, so keep the default.
    }
    if (diagnostics_->GetDebug()) {
      diagnostics_->DebugLog(label + section + ", Key = " + key + ", Result = " + format(result));
    }
    return result;
  });
}

std::int16_t Settings::GetIntegerSetting(const std::string& application, const std::string& section,
                                         const std::string& key,
                                         const std::string& default_text) const {
  return Get<std::int16_t>(
      "GetIntegerSetting", "GetIntegerSetting, Section = ", application, section, key, default_text,
      [](const std::string& text) { return ToInteger(text); },
      [](std::int16_t value) { return std::to_string(value); });
}

std::int32_t Settings::GetLongSetting(const std::string& application, const std::string& section,
                                      const std::string& key,
                                      const std::string& default_text) const {
  return Get<std::int32_t>(
      "GetLongSetting", "GetLongSetting,    Section = ", application, section, key, default_text,
      [](const std::string& text) { return ToLong(text); },
      [](std::int32_t value) { return std::to_string(value); });
}

bool Settings::GetBooleanSetting(const std::string& application, const std::string& section,
                                 const std::string& key, const std::string& default_text) const {
  return Get<bool>(
      "GetBooleanSetting", "GetBooleanSetting, Section = ", application, section, key, default_text,
      [](const std::string& text) { return ToBoolean(text); },
      [](bool value) { return std::string(BooleanText(value)); });
}

std::string Settings::GetStringSetting(const std::string& application, const std::string& section,
                                       const std::string& key,
                                       const std::string& default_text) const {
  // Support's tools recognise this line by the small "s" in the middle of its label.
  return Get<std::string>(
      "GetStringSetting", "GetstringSetting,  Section = ", application, section, key, default_text,
      [](const std::string& text) { return text; }, [](const std::string& value) { return value; });
}

}  // namespace Common
}  // namespace skyhop
