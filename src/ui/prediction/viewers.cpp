#include "ui/prediction/viewers.h"

#include <array>
#include <vector>

#include "common/errors.h"
#include "common/files.h"
#include "common/program.h"
#include "common/settings.h"
#include "common/text.h"
#include "ui/shared/web_address.h"

namespace skyhop {
namespace {

constexpr std::array<Address, 4> kWebPages = {Address::kURL0, Address::kURL1, Address::kURL2,
                                              Address::kURL3};

/// A file's path and its content below, or the reason why the file cannot be read.
std::string FileText(const std::filesystem::path& file) {
  constexpr std::size_t longest = std::size_t{8} << 20U;
  const std::string heading = PathText(file) + "\n\n";
  try {
    return heading + ReadFile(file, longest);
  } catch (const Error& error) {
    return heading + "This file cannot be shown: " + error.what() + "\n";
  }
}

}  // namespace

void FileViewer::Show() {
  const std::filesystem::path results = with_.run.ResultsFile();
  if (results.empty()) return;
  const std::filesystem::path deck = results.parent_path() / "script.txt";
  const std::string viewer = with_.settings.GetStringSetting(kProductName, "IonCap", "Viewer", "");
  if (Trim(viewer).empty()) {
    with_.window.ShowText("Deck " + FileText(deck) + "\n\nResults " + FileText(results));
    return;
  }
  ShowInViewer(viewer, deck);
  ShowInViewer(viewer, results);
}

void FileViewer::ShowInViewer(const std::string& viewer, const std::filesystem::path& file) {
  std::error_code ignored;
  if (!std::filesystem::exists(file, ignored)) {
    return with_.fields.Tell("There is no file " + PathText(file));
  }
  const LaunchResult opened = with_.launcher.OpenInViewer(viewer, file);
  if (opened.Succeeded()) return;
  with_.fields.Tell(PathText(file) + " cannot be opened with " + viewer + ": " +
                    LaunchErrorText(opened.code));
}

void PageViewer::ShowHelp() {
  const std::string file = PathText(with_.help_file);
  if (with_.view.OpenInBrowser(Common::HTTPFilename(file))) return;
  with_.fields.Tell("The help cannot be opened in a browser; it is in " + file);
}

void PageViewer::OfferPages() {
  std::vector<WebPage> pages;
  for (std::size_t page = 0; page < kWebPages.size(); ++page) {
    const std::string url(Trim(with_.configuration.Url(kWebPages.at(page))));
    if (!url.empty()) pages.push_back({static_cast<int>(page), WebPageTitle(url), url});
  }
  with_.view.SetWebPages(pages);
}

void PageViewer::OpenPage(int page) {
  const std::string url(
      Trim(with_.configuration.Url(kWebPages.at(static_cast<std::size_t>(page)))));
  const std::string name = "Web page " + std::to_string(page + 1);
  if (url.empty()) {
    with_.fields.Tell(name +
                      " has no address; enter one in the Configuration window's 'Prediction URLs' "
                      "panel");
  } else if (!IsWebAddress(url)) {
    with_.fields.Tell(name +
                      " cannot be opened: its address does not begin with http:// or https://");
  } else if (!with_.view.OpenInBrowser(url)) {
    with_.fields.Tell(url + " cannot be opened in a browser");
  }
}

}  // namespace skyhop
