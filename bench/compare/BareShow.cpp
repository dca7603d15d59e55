#include "BareShow.h"

#include "../CameraPicture.h"

#include <QApplication>
#include <QKeyEvent>
#include <QPainter>
#include <QWidget>

#include <algorithm>
#include <filesystem>
#include <vector>

namespace {

namespace fs = std::filesystem;

class Window : public QWidget {
public:
    Window(int toAScreen, const std::string& file) : m_count(toAScreen) {
        for (const auto& entry : fs::directory_iterator(fs::path(file).parent_path()))
            m_files.push_back(entry.path().string());
        std::sort(m_files.begin(), m_files.end());
        m_next = std::size_t(std::find(m_files.begin(), m_files.end(), file) - m_files.begin());
    }

protected:
    void keyReleaseEvent(QKeyEvent*) override {
        m_pictures.erase(m_pictures.begin());
        update();
    }
    void paintEvent(QPaintEvent*) override {
        const int across = m_count == 4 ? 2 : 1;
        const QSize box(width() / across, height() / across);
        while (m_pictures.size() < std::size_t(m_count))
            m_pictures.push_back(
                tarn::bench::BareDecodeAndScale(m_files[m_next++ % m_files.size()], box));
        QPainter painter(this);
        for (int i = 0; i < m_count; ++i)
            painter.drawImage(i % across * box.width(), i / across * box.height(),
                              m_pictures[std::size_t(i)]);
    }

private:
    int m_count;
    std::size_t m_next = 0;
    std::vector<std::string> m_files;
    std::vector<QImage> m_pictures;
};

} // namespace

int BareShow(int argc, char** argv, int toAScreen, const std::string& file) {
    const QApplication application(argc, argv);
    Window window(toAScreen, file);
    window.showMaximized();
    return QApplication::exec();
}
