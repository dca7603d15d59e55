#include "thumbnails/ThumbGrid.h"

#include "common/paths.h"
#include "widgets/FileListBox.h"
#include "widgets/PictureCells.h"

#include <QPushButton>
#include <QSignalBlocker>

#include <cmath>

namespace tarn {

namespace {

constexpr int kKept = 64 * 1024; // kilobytes of pictures
constexpr int kRest = 30;        // milliseconds that the list stands still before it is looked at
constexpr int kBatchRest = 500;  // until a batch is looked at again

} // namespace

ThumbGrid::ThumbGrid(Context& context) : m(context), m_pictures(kKept) {
    m_asking.setSingleShot(true);
    QObject::connect(&m_asking, &QTimer::timeout, [this] { AskForSeen(); });
}

ThumbGrid::~ThumbGrid() = default;

void ThumbGrid::ConnectControls() {
    QPushButton* button = m.controls.ListPicturesButton;
    button->setCheckable(true);
    Connect(button, [this] { ListPicturesButton_Click(); });
    FileListBox& list = *m.controls.FileListBox;
    list.SetPictures([this](int row) { return PictureOf(row); });
    QObject::connect(list.model(), &QAbstractItemModel::modelReset, &m_asking,
                     [this] { Forget(); });
}

void ThumbGrid::ShowSettings() {
    Show(m.state.ListPictures);
}

void ThumbGrid::ListPicturesButton_Click() {
    Show(m.controls.ListPicturesButton->isChecked());
}

void ThumbGrid::Show(bool pictures) {
    m.state.ListPictures = pictures;
    const QSignalBlocker silent(m.controls.ListPicturesButton);
    m.controls.ListPicturesButton->setChecked(pictures);
    m.controls.FileListBox->ShowPictures(pictures);
}

// The list was read anew: pictures may have changed under their names. Those of the same folder
// stay until they have been looked at again.
void ThumbGrid::Forget() {
    ++m_generation;
    if (m_folder != m.controls.FileListBox->Path()) m_pictures.clear();
    m_folder = m.controls.FileListBox->Path();
    if (m_worker) m_worker->Expect(m_generation, {});
}

QImage ThumbGrid::PictureOf(int row) {
    const Picture* picture = m_pictures.object(m.controls.FileListBox->Text(row));
    const bool isNew = picture && picture->generation == m_generation;
    if (!isNew && !m_asking.isActive()) m_asking.start(kRest);
    return picture ? picture->image : QImage();
}

void ThumbGrid::AskForSeen() {
    if (m.state.BatchRuns) {
        m_asking.start(kBatchRest);
        return;
    }
    const FileListBox& list = *m.controls.FileListBox;
    std::vector<GridWish> wishes;
    const std::string thumbnails = m.thumbnails.ThumbnailFolderPath();
    for (const int row : list.SeenRows()) {
        const std::string& name = list.Text(row);
        const std::string type = FileTypeOf(name);
        const Picture* picture = m_pictures.object(name);
        if ((picture && picture->generation == m_generation) || type == ".TXT" || type == ".LOG" ||
            IsListedType(m.state.WebTypes, type))
            continue;
        const bool isClip = IsListedType(m.state.VideoTypes, type);
        wishes.push_back({JoinPath(list.Path(), name),
                          thumbnails.empty() || isClip
                              ? std::string()
                              : JoinPath(thumbnails, m.thumbnails.ThumbnailNameOf(name)),
                          isClip, isClip && m.state.SharpestOfClips});
    }
    if (!m_worker) {
        const double side = kCellPicture * list.devicePixelRatioF();
        m_worker = std::make_unique<GridPictures>(
            static_cast<int>(std::ceil(side)),
            [this](int generation, const std::string& picture, const QImage& image) {
                QMetaObject::invokeMethod(
                    &m_asking, [=, this] { Take(generation, picture, image); },
                    Qt::QueuedConnection);
            });
    }
    m_worker->Expect(m_generation, std::move(wishes));
}

void ThumbGrid::Take(int generation, const std::string& picture, const QImage& image) {
    if (generation != m_generation) return; // of a list that is no more
    const auto kilobytes = static_cast<int>(image.sizeInBytes() / 1024) + 1;
    m_pictures.insert(LastPart(picture), new Picture{image, generation},
                      kilobytes); // the cache's own
    FileListBox& list = *m.controls.FileListBox;
    if (list.ShowsPictures()) list.viewport()->update();
}

} // namespace tarn
