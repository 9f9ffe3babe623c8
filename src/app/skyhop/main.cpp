#include <wx/app.h>
#include <wx/image.h>
#include <wx/msgdlg.h>

#include <exception>
#include <memory>

#include "app/skyhop/skyhop_program.h"
#include "common/errors.h"
#include "common/program.h"
#include "platform/desktop.h"
#include "ui/wx/wx_text.h"

namespace skyhop {
namespace {

class SkyhopApp : public wxApp {
 public:
  bool OnInit() override {
    SetAppName(kProductName);
    SetClassName(kProductName);
    wxImage::AddHandler(new wxPNGHandler);
    try {
      color_scheme_ = std::make_unique<platform::ColorSchemeFollower>();
      program_ = std::make_unique<SkyhopProgram>();
      return program_->Start();
    } catch (const std::exception& error) {
      wxMessageBox(ToWx(std::string("Skyhop cannot start: ") + error.what()), kProductName,
                   wxOK | wxICON_ERROR);
      return false;
    }
  }

  int OnExit() override {
    // Closed windows go first: they show what the program holds.
    DeletePendingObjects();
    program_.reset();
    color_scheme_.reset();
    return wxApp::OnExit();
  }

  /// A fault in a handler is logged; the window stays usable.
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
  std::unique_ptr<platform::ColorSchemeFollower> color_scheme_;
  std::unique_ptr<SkyhopProgram> program_;
};

}  // namespace
}  // namespace skyhop

wxIMPLEMENT_APP(skyhop::SkyhopApp);
