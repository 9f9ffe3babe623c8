#include <wx/app.h>
#include <wx/dialog.h>
#include <wx/image.h>
#include <wx/msgdlg.h>
#include <wx/timer.h>

#include <exception>
#include <memory>

#include "app/skyhop/skyhop_program.h"
#include "common/errors.h"
#include "common/program.h"
#include "platform/desktop.h"
#include "ui/wx/wx_text.h"

namespace skyhop {
namespace {

/// The longest delay of a request to end the program.
constexpr int kEndInterval = 250;  // ms

/// An open dialog, null if there is none.
wxDialog* OpenDialog() {
  for (wxWindow* window : wxTopLevelWindows) {
    auto* const dialog = dynamic_cast<wxDialog*>(window);
    if (dialog != nullptr && dialog->IsShown()) return dialog;
  }
  return nullptr;
}

class SkyhopApp : public wxApp {
 public:
  bool Initialize(int& count, wxChar** arguments) override {
    if (!StartToolkit(count, arguments)) return false;
    platform::LoadFontsAhead();
    return true;
  }

  bool OnInit() override {
    SetAppName(kProductName);
    SetClassName(kProductName);
    wxImage::AddHandler(new wxPNGHandler);
    try {
      color_scheme_ = std::make_unique<platform::ColorSchemeFollower>();
      program_ = std::make_unique<SkyhopProgram>();
      // Do this before the window exists, because a request may arrive during its start.
      platform::KeepEndRequests();
      end_timer_.Bind(wxEVT_TIMER, [this](wxTimerEvent&) { FollowEndRequest(); });
      end_timer_.Start(kEndInterval);
      program_->SetEndListener([this] {
        peer_ends_ = true;
        FollowEndRequest();
      });
      return program_->Start();
    } catch (const std::exception& error) {
      wxMessageBox(ToWx(std::string("Skyhop cannot start: ") + error.what()), kProductName,
                   wxOK | wxICON_ERROR);
      return false;
    }
  }

  int OnExit() override {
    end_timer_.Stop();
    // Delete closed windows first, because they show data of the program.
    DeletePendingObjects();
    program_.reset();
    color_scheme_.reset();
    return wxApp::OnExit();
  }

  /// Logs an exception from an event handler; the window stays usable.
  bool OnExceptionInMainLoop() override {
    try {
      throw;
    } catch (const Error& error) {
      program_->GetDiagnostics().ProgramError("SkyhopApp.OnExceptionInMainLoop", error);
    } catch (const std::exception& error) {
      program_->GetDiagnostics().ErrorLog(std::string("SkyhopApp.OnExceptionInMainLoop: ") +
                                          error.what());
    } catch (...) {
      program_->GetDiagnostics().ErrorLog("SkyhopApp.OnExceptionInMainLoop: unknown fault");
    }
    return true;
  }

 private:
  bool StartToolkit(int& count, wxChar** arguments) {
    const platform::PlainDisplayStart plain;
    return wxApp::Initialize(count, arguments);
  }

  /// Closes the window like the user does, so that everything is saved.
  void FollowEndRequest() {
    if (!peer_ends_ && !platform::EndRequested()) return;
    if (platform::CancelNativeDialogs()) return;
    if (wxDialog* const dialog = OpenDialog()) {
      // The code that opened the dialog must finish before the window closes.
      dialog->Hide();
      return;
    }
    // If the window is busy, the next tick asks it again.
    if (program_->CloseWindow()) end_timer_.Stop();
  }

  std::unique_ptr<platform::ColorSchemeFollower> color_scheme_;
  std::unique_ptr<SkyhopProgram> program_;
  wxTimer end_timer_;
  bool peer_ends_ = false;
};

}  // namespace
}  // namespace skyhop

wxIMPLEMENT_APP(skyhop::SkyhopApp);
