#pragma once

#include <array>
#include <functional>
#include <optional>
#include <string>

#include "common/diagnostics.h"
#include "common/user_messages.h"
#include "engine/prediction_form.h"
#include "ui/shared/configuration.h"
#include "ui/shared/controls.h"
#include "ui/shared/prediction_view.h"
#include "ui/shared/view_form.h"

namespace skyhop {

/// The text fields of the window: takes over what the user types when a field is left, or refuses
/// it with a message.
class InputFields {
 public:
  struct Collaborators {
    PredictionView& view;
    const Configuration& configuration;
    UserMessages& messages;
    Diagnostics& diagnostics;
  };
  using Listener = std::function<void(TextField field, const std::string& text)>;

  explicit InputFields(const Collaborators& collaborators) : with_(collaborators) {}

  /// Called when a field accepts another text than before, from the user or from a peer.
  void SetListener(Listener listener) { on_accepted_ = std::move(listener); }
  /// Called after that for texts that the user typed.
  void SetTypedListener(std::function<void()> listener) { on_typed_ = std::move(listener); }

  /// The form that the window shows now.
  [[nodiscard]] PredictionForm Form() const { return FormOf(with_.view, with_.configuration); }
  [[nodiscard]] std::string Text(TextField field) const { return with_.view.Text(field); }
  /// The text of a field. A coordinate that the user typed becomes the program's own form of it,
  /// which the field shows from then on, so that the user sees what was understood.
  [[nodiscard]] std::string Understood(TextField field);
  /// Whether a message about this text was shown, or the text was marked as refused.
  [[nodiscard]] bool Refused(TextField field, const std::string& text) const {
    return StateOf(field).refused == text;
  }

  /// The user pressed Enter in the field. Returns whether the text is accepted.
  bool Enter(TextField field);
  /// The user left the field. Returns false when a message has just been shown about its text; each
  /// refused text gets one message.
  bool Leave(TextField field);
  /// Takes over all texts that were typed and not left yet. Returns false after a message about a
  /// refused text, unless the prediction itself reports it.
  [[nodiscard]] bool AcceptAll();
  /// The user changed the field's text.
  void Change(TextField field);

  /// Shows an accepted text of the program's own.
  void Put(TextField field, const std::string& text);
  /// Takes over a peer's text, if it differs and a peer may give it: a finite number and nothing
  /// behind it, or a coordinate with its hemisphere letter.
  void TakeFromPeer(TextField field, const std::string& text);
  [[nodiscard]] bool AcceptableFromPeer(TextField field, const std::string& text);
  /// The program has written the field: accepts its text.
  void Confirm(TextField field) { StateOf(field).committed = with_.view.Text(field); }

  /// Takes the restored texts for accepted ones. Marks those that are refused: another version or a
  /// text editor may have stored them.
  void RememberAll();
  /// The program ends: accepts the typed texts that are acceptable and puts the value before it in
  /// the place of a refused text, so that only good values are saved.
  void SettleAll();

  /// Shows a message with the program's name.
  void Tell(const std::string& message);

 private:
  struct FieldState {
    std::optional<std::string> committed;  ///< what the field held when it was accepted last
    std::optional<std::string> refused;    ///< the text that a message was shown about
  };

  [[nodiscard]] FieldState& StateOf(TextField field) {
    return fields_.at(static_cast<std::size_t>(field));
  }
  [[nodiscard]] const FieldState& StateOf(TextField field) const {
    return fields_.at(static_cast<std::size_t>(field));
  }
  [[nodiscard]] const char* TypedProblem(TextField field, const std::string& text);
  [[nodiscard]] bool Commit(TextField field);
  bool Accept(TextField field, const std::string& text);

  Collaborators with_;
  Listener on_accepted_;
  std::function<void()> on_typed_;
  std::array<FieldState, kTextFieldCount> fields_;
};

}  // namespace skyhop
