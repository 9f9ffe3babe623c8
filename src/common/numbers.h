#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace skyhop {

// Numbers in text, the same in every locale: optional blanks, an optional sign, digits with at most
// one point (one side of it may be empty) and an optional exponent ("e" or "E", an optional sign,
// digits). No thousands separators, no hexadecimal, no "inf" or "nan".

/// The number at the start of `text`, reading up to the first character that cannot belong to it;
/// 0 when there is none. A number beyond the range of double is plus or minus infinity.
[[nodiscard]] double LeadingNumber(std::string_view text);

/// Whether there is a number at the start of `text`.
[[nodiscard]] bool BeginsWithNumber(std::string_view text);

/// The number if the whole trimmed `text` is one, nothing otherwise. Beyond the range of double it
/// is plus or minus infinity.
[[nodiscard]] std::optional<double> WholeNumberText(std::string_view text);

/// Converts a text that must be a number as a whole.
/// Throws Error 13 (not a number) or 6 (beyond the range of the type).
[[nodiscard]] double ToDouble(std::string_view text);
[[nodiscard]] float ToSingle(std::string_view text);
/// As above, a fraction rounded to the nearest integer, halves to the even neighbour.
[[nodiscard]] std::int16_t ToInteger(std::string_view text);
[[nodiscard]] std::int32_t ToLong(std::string_view text);
/// "True" and "False" in any case, or a number: zero is false, any other true. Throws Error 13.
[[nodiscard]] bool ToBoolean(std::string_view text);

/// Rounds to the nearest integer, halves to the even neighbour.
/// Throws Error 6 when the result is beyond the type's range or `value` is not a number.
[[nodiscard]] std::int16_t RoundToInteger(double value);
[[nodiscard]] std::int32_t RoundToLong(double value);

/// Stores a double in single precision. Throws Error 6 when it is beyond the range.
[[nodiscard]] float StoreSingle(double value);

/// The shortest plain decimal text that reads back as the same value: "0.25", "-3", "100000".
[[nodiscard]] std::string NumberText(double value);
[[nodiscard]] std::string NumberText(float value);

/// `value` with exactly `decimals` digits after the point, rounded half to even on the exact binary
/// value: FixedText(2.5, 0) is "2". Never an exponent.
[[nodiscard]] std::string FixedText(double value, int decimals);

/// `value` in decimal, zeros on the left up to `width` digits.
[[nodiscard]] std::string PaddedNumber(int value, int width);

}  // namespace skyhop
