#include "web/PageBuild.h"

#include "common/paths.h"
#include "platform/WholeFile.h"
#include "web/PageHead.h"
#include "web/PageText.h"
#include "web/SavedValues.h"
#include "web/SystemError.h"

namespace tarn {

namespace {

constexpr std::size_t kLargestText = 16U << 20U; // bytes of a text that is put into a page

// One that stands there as it is need not be written again.
bool PutScript(Files& files, const std::string& path, const std::string& bytes,
               std::string* error) {
    return files.Read(path, bytes.size() + 1) == bytes || ReplaceFile(files, path, bytes, error);
}

} // namespace

void PageBuild::Choose(const std::string& path, const std::string& pictureFolder) {
    m_path = path;
    m_run.prefix = RelativePrefix(path, pictureFolder);
    m_count = 0;
}

bool PageBuild::Fail(const std::string& error) {
    m_fault = {"Write html file error", ErrorBoxText("Error writting to html file", m_path, error)};
    return false;
}

bool PageBuild::Begin(Files& files, const HtmlSettings& settings, const std::string& now,
                      const std::string& script) {
    const HtmlSettings bytes = InPageBytes(settings);
    const std::string time = ToPageBytes(now);
    std::string error;
    if (!m_page.Create(files, m_path, PageHead(bytes, ToPageBytes(m_version), time), &error))
        return Fail(error);
    if (settings.HtmlZoomPan != 0) {
        const std::string target = JoinPath(FolderOf(m_path), kZoomScript);
        const auto bytes = ReadWhole(files, script, kLargestScript, &error);
        if (!bytes || !PutScript(files, target, *bytes, &error)) {
            m_fault = {"Copy javascript file error",
                       ErrorBoxText("Error creating javascript file", m_path, error)};
            m_page.Leave();
            return false;
        }
    }
    if (!m_page.Add(files, PageTitleTable(bytes, time), &error)) {
        m_page.Leave();
        return Fail(error);
    }
    m_run.Begin();
    return true;
}

bool PageBuild::Append(Files& files, const std::string& now) {
    std::string error;
    return m_page.Append(files, m_path, ToPageBytes(now), &error) || Fail(error);
}

bool PageBuild::Add(Files& files, const HtmlSettings& settings, bool exifInfo,
                    const EntryFacts& facts) {
    const PageRun before = m_run;
    std::string error;
    if (m_page.Add(files, PageEntry(InPageBytes(settings), exifInfo, facts, m_run), &error)) {
        ++m_count;
        return true;
    }
    m_run = before;
    std::string unclosed;
    m_page.Close(files, &unclosed);
    return Fail(error);
}

bool PageBuild::Close(Files& files) {
    std::string error;
    return m_page.Close(files, &error) || Fail(error);
}

void PageBuild::SetLinkTarget(const std::string& name) {
    m_run.linkTarget = ToPageBytes(name);
}

std::vector<std::string> TextFileLines(const Files& files, const std::string& path) {
    std::string bytes = files.Read(path, kLargestText + 1).value_or(std::string());
    const bool goesOn = bytes.size() > kLargestText;
    if (goesOn) bytes.resize(kLargestText);
    std::vector<std::string> lines;
    for (std::size_t from = 0; from < bytes.size();) {
        const std::size_t end = std::min(bytes.find_first_of("\r\n", from), bytes.size());
        lines.push_back(bytes.substr(from, end - from));
        from = end + (bytes.compare(end, kLineEnd.size(), kLineEnd) == 0 ? 2 : 1);
    }
    if (goesOn)
        lines.push_back("(the first " + std::to_string(kLargestText) + " bytes of the file)");
    return lines;
}

void FindCompanions(const Files& files, const HtmlSettings& settings, const std::string& path,
                    EntryFacts& facts) {
    const auto stands = [&](const std::string& name) {
        return !name.empty() && files.Exists(JoinPath(FolderOf(path), name));
    };
    facts.hasLabel = stands(LabelNameOf(settings, LastPart(path)));
    facts.hasVideo = stands(VideoNameOf(settings, LastPart(path)));
}

} // namespace tarn
