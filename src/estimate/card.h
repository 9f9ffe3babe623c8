#pragma once

#include <string>
#include <string_view>

namespace skyhop::estimate {

/// Columns of a card, counted from 1, both included.
struct Columns {
  int first = 1;
  int last = 1;
};

/// One line of a deck: a name in columns 1 to 10 and fields in fixed columns behind it. A line
/// shorter than a field counts as filled up with blanks.
///
/// Every reading function throws an Error (number 13) whose description names the line, the card,
/// the columns, the field and the text that was found there.
class Card {
 public:
  /// `line` is the number of the line in the deck, from 1. The text must outlive the card.
  /// Throws when it holds anything but printable ASCII characters.
  Card(int line, std::string_view text);

  /// The name, left-justified in columns 1 to 10, without its trailing blanks.
  [[nodiscard]] std::string_view Name() const;

  [[nodiscard]] bool IsBlank() const;

  /// A number: a sign or none, and digits. Without a written decimal point the last `decimals`
  /// digits are decimals. Blanks in the field are ignored, and a blank field is 0.
  [[nodiscard]] double Number(Columns columns, int decimals, std::string_view field) const;

  /// The same, refused outside `least` to `greatest`.
  [[nodiscard]] double NumberWithin(Columns columns, int decimals, std::string_view field,
                                    double least, double greatest) const;

  /// A whole number without a point; blanks as above.
  [[nodiscard]] int Integer(Columns columns, std::string_view field) const;
  [[nodiscard]] int IntegerWithin(Columns columns, std::string_view field, int least,
                                  int greatest) const;

  /// One of two letters, in either case, in the first of the columns; the others must be blank.
  /// Returns whether it is the second.
  [[nodiscard]] bool IsSecondLetter(Columns columns, std::string_view field, char first,
                                    char second) const;

  /// Refuses a card with text in or behind the column.
  void ExpectEndAt(int column) const;

  /// The text in the columns, blanks included; shorter when the line ends before.
  [[nodiscard]] std::string_view Text(Columns columns) const;

  /// Throws the error for a field: "line 3, MONTH card, columns 16-20: month "   13" is not ...",
  /// where `complaint` is "is not ...".
  [[noreturn]] void Refuse(Columns columns, std::string_view field,
                           std::string_view complaint) const;

  /// Throws the error for the card as a whole.
  [[noreturn]] void Refuse(std::string_view complaint) const;

 private:
  int line_;
  std::string_view text_;
};

}  // namespace skyhop::estimate
