#pragma once

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "ui/drawing/surface.h"

namespace skyhop::testing {

/// One call of a drawing operation.
struct DrawingCall {
  enum class Kind { kClear, kLine, kRectangle, kText };

  Kind kind = Kind::kClear;
  Point from{};        ///< of a line; position of a text
  Point to{};          ///< of a line
  Pen pen{};           ///< of a line; its colour is also that of a clearing or a rectangle
  Rectangle area{};    ///< of a rectangle
  std::string text{};  ///< of a text
  TextStyle style{};   ///< of a text
};

/// Keeps all drawing calls in their order.
class RecordingSurface : public Surface {
 public:
  void Clear(Color background) override {
    calls.push_back({.kind = DrawingCall::Kind::kClear, .pen = {background}});
  }
  void Line(Point from, Point to, const Pen& pen) override {
    calls.push_back({.kind = DrawingCall::Kind::kLine, .from = from, .to = to, .pen = pen});
  }
  void FillRectangle(const Rectangle& area, Color color) override {
    calls.push_back({.kind = DrawingCall::Kind::kRectangle, .pen = {color}, .area = area});
  }
  void Text(Point position, std::string_view text, const TextStyle& style) override {
    calls.push_back({.kind = DrawingCall::Kind::kText,
                     .from = position,
                     .text = std::string(text),
                     .style = style});
  }

  [[nodiscard]] std::vector<DrawingCall> Only(DrawingCall::Kind kind) const {
    std::vector<DrawingCall> found;
    std::copy_if(calls.begin(), calls.end(), std::back_inserter(found),
                 [&](const DrawingCall& call) { return call.kind == kind; });
    return found;
  }
  [[nodiscard]] std::vector<DrawingCall> Lines() const { return Only(DrawingCall::Kind::kLine); }
  [[nodiscard]] std::vector<DrawingCall> Texts() const { return Only(DrawingCall::Kind::kText); }

  std::vector<DrawingCall> calls;
};

}  // namespace skyhop::testing
