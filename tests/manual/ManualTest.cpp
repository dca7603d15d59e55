// The manual holds together: nothing in it leads nowhere, and nothing in it cannot be found.
#include "app/help/HelpPages.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <regex>
#include <set>
#include <string>
#include <vector>

namespace tarn {
namespace {

namespace fs = std::filesystem;

const fs::path kManual = TARN_MANUAL;

std::string Read(const fs::path& file) {
    std::ifstream in(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

std::vector<std::string> All(const std::string& text, const char* pattern) {
    const std::regex wanted(pattern);
    std::vector<std::string> found;
    for (std::sregex_iterator at(text.begin(), text.end(), wanted), end; at != end; ++at)
        found.push_back((*at)[1]);
    return found;
}

std::map<std::string, std::string> Pages() {
    std::map<std::string, std::string> pages;
    for (const auto& each : fs::directory_iterator(kManual))
        if (each.path().extension() == ".html") pages[each.path().filename()] = Read(each.path());
    return pages;
}

TEST(Manual, EveryLinkAndPictureLeadsToAFileOfTheManual) {
    const auto pages = Pages();
    ASSERT_GT(pages.size(), 20U);
    std::set<std::string> pictures;
    for (const auto& [name, html] : pages) {
        for (const std::string& link : All(html, "(?:href|src)=\"([^\"]*)\""))
            EXPECT_TRUE(fs::is_regular_file(kManual / link)) << name << ": " << link;
        for (const std::string& picture : All(html, "src=\"([^\"]*)\"")) pictures.insert(picture);
        EXPECT_EQ(All(html, "<img ()").size(), All(html, "<img [^>]*alt=\"([^\"]+)\"").size())
            << name << ": a picture without its words";
    }
    for (const auto& each : fs::directory_iterator(kManual / "images"))
        EXPECT_TRUE(pictures.count("images/" + each.path().filename().string()))
            << each.path() << " is on no page";
}

TEST(Manual, EveryPageIsReachedFromTheIndex) {
    auto pages = Pages();
    std::vector<std::string> next{"index.html"};
    while (!next.empty()) {
        const std::string name = next.back();
        next.pop_back();
        const auto page = pages.extract(name);
        if (!page) continue;
        for (const std::string& link : All(page.mapped(), "href=\"([^\"]*[.]html)\""))
            next.push_back(link);
    }
    for (const auto& [name, html] : pages) ADD_FAILURE() << name << " is linked from nowhere";
}

TEST(Manual, TheHelpWindowListsEveryPageByItsTitle) {
    auto pages = Pages();
    for (const HelpPageRow& row : HelpPages()) {
        if (row.page == kHelpKeys) continue; // the window makes it
        const std::string file = row.file;
        ASSERT_EQ(file.rfind("help/", 0), 0U) << file;
        const auto page = pages.extract(file.substr(5));
        ASSERT_TRUE(page) << file;
        EXPECT_EQ(All(page.mapped(), "<title>([^<]*)</title>"),
                  std::vector<std::string>{row.title});
        EXPECT_EQ(All(page.mapped(), "<h1>([^<]*)</h1>"), std::vector<std::string>{row.title});
    }
    for (const auto& [name, html] : pages) ADD_FAILURE() << name << " is not listed";
}

} // namespace
} // namespace tarn
