// Runs the tests within a started window program. The tests run its event loop.

#include <gtest/gtest.h>

#include <wx/app.h>
#include <wx/evtloop.h>
#include <wx/image.h>

#include <iostream>

namespace skyhop::testing {
namespace {

void FailOnAssertion(const wxString& file, int line, const wxString& function,
                     const wxString& condition, const wxString& message) {
  ADD_FAILURE() << "the toolkit complains in " << function << " (" << file << ":" << line
                << "): " << condition << ": " << message;
}

class GuiTestApp : public wxApp {
 public:
  bool OnInit() override {
    wxSetAssertHandler(&FailOnAssertion);
    wxImage::AddHandler(new wxPNGHandler);
    // Tests close the program's windows and open them again.
    SetExitOnFrameDelete(false);
    return true;
  }

  int OnRun() override {
    wxEventLoop loop;
    const wxEventLoopActivator active(&loop);
    return RUN_ALL_TESTS();
  }
};

}  // namespace
}  // namespace skyhop::testing

wxIMPLEMENT_APP_NO_MAIN(skyhop::testing::GuiTestApp);

int main(int argc, char** argv) {
  ::testing::InitGoogleTest(&argc, argv);
  if (GTEST_FLAG_GET(list_tests)) return RUN_ALL_TESTS();
  const int status = wxEntry(argc, argv);
  if (status != 0) std::cerr << "the window tests have failed or found no display\n";
  return status;
}
