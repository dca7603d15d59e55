#include "widgets/Dialogs.h"

#include "platform/QtText.h"
#include "widgets/printing/PrinterDialog.h"

#include <QAbstractButton>
#include <QApplication>
#include <QColorDialog>
#include <QFileDialog>
#include <QFileInfo>
#include <QFontDialog>
#include <QInputDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>

#include <algorithm>

namespace tarn {

namespace {

QMessageBox::Icon BoxIcon(Dialogs::Icon icon) {
    switch (icon) {
    case Dialogs::Icon::Information:
        return QMessageBox::Information;
    case Dialogs::Icon::Exclamation:
        return QMessageBox::Warning;
    case Dialogs::Icon::Critical:
        return QMessageBox::Critical;
    }
    return QMessageBox::NoIcon;
}

class QtDialogs : public Dialogs {
public:
    void Message(Icon icon, const std::string& title, const std::string& text) override {
        Box(icon, title, text, QMessageBox::Ok);
    }
    bool Confirm(Icon icon, const std::string& title, const std::string& text) override {
        return Box(icon, title, text, QMessageBox::Ok | QMessageBox::Cancel) == QMessageBox::Ok;
    }
    int Choose(Icon icon, const std::string& title, const std::string& text,
               const std::vector<std::string>& buttons) override {
        QMessageBox box(BoxIcon(icon), ToQt(title), ToQt(text), QMessageBox::NoButton,
                        QApplication::activeWindow());
        box.setTextFormat(Qt::PlainText);
        std::vector<QAbstractButton*> made;
        made.reserve(buttons.size());
        for (const std::string& caption : buttons)
            made.push_back(box.addButton(ToCaption(caption), QMessageBox::ActionRole));
        box.setEscapeButton(made.back());
        box.exec();
        const auto pressed = std::find(made.begin(), made.end(), box.clickedButton());
        return static_cast<int>((pressed == made.end() ? made.end() - 1 : pressed) - made.begin());
    }
    std::string AskText(const std::string& title, const std::string& label,
                        const std::string& text) override {
        return FromQt(QInputDialog::getText(QApplication::activeWindow(), ToQt(title), ToQt(label),
                                            QLineEdit::Normal, ToQt(text)));
    }
    std::string OpenFile(const std::string& title, const std::string& folder,
                         const std::string& filter) override {
        return FromQt(QFileDialog::getOpenFileName(QApplication::activeWindow(), ToQt(title),
                                                   ToQt(folder), ToQt(filter)));
    }
    std::string ChooseFolder(const std::string& title, const std::string& folder) override {
        return FromQt(QFileDialog::getExistingDirectory(QApplication::activeWindow(), ToQt(title),
                                                        ToQt(folder)));
    }
    std::string SaveFile(const std::string& title, const std::string& path,
                         const std::string& filter) override {
        // The ending is added before the question, so that it asks about the file that is written.
        QFileDialog dialog(QApplication::activeWindow(), ToQt(title), ToQt(path), ToQt(filter));
        dialog.setAcceptMode(QFileDialog::AcceptSave);
        dialog.setDefaultSuffix(QFileInfo(ToQt(path)).suffix());
        dialog.selectFile(ToQt(path));
        const bool chosen = dialog.exec() == QDialog::Accepted;
        return chosen ? FromQt(dialog.selectedFiles().value(0)) : std::string();
    }
    std::string ChooseTarget(const std::string& title, const std::string& start,
                             const std::string& filter, const std::string& ending) override {
        QFileDialog dialog(QApplication::activeWindow(), ToQt(title), ToQt(start), ToQt(filter));
        dialog.setAcceptMode(QFileDialog::AcceptSave);
        dialog.setOption(QFileDialog::DontConfirmOverwrite);
        dialog.setDefaultSuffix(ToQt(ending));
        const bool chosen = dialog.exec() == QDialog::Accepted;
        return chosen ? FromQt(dialog.selectedFiles().value(0)) : std::string();
    }
    std::optional<int> ChooseColor(const std::string& title, int from) override {
        const QColor before(from & 0xFF, from >> 8 & 0xFF, from >> 16 & 0xFF);
        const QColor chosen =
            QColorDialog::getColor(before, QApplication::activeWindow(), ToQt(title));
        if (!chosen.isValid()) return std::nullopt;
        return chosen.red() | chosen.green() << 8 | chosen.blue() << 16;
    }
    bool ChooseFont(const std::string& title, std::string& name, int& size) override {
        bool chosen = false;
        const QFont font = QFontDialog::getFont(&chosen, QFont(ToQt(name), size),
                                                QApplication::activeWindow(), ToQt(title));
        if (!chosen) return false;
        name = FromQt(font.family());
        size = font.pointSize();
        return true;
    }
    bool ChoosePrinter(PrintQuestion& question) override { return ShowPrinterDialog(question); }

private:
    static int Box(Icon icon, const std::string& title, const std::string& text,
                   QMessageBox::StandardButtons buttons) {
        QMessageBox box(BoxIcon(icon), ToQt(title), ToQt(text), buttons,
                        QApplication::activeWindow());
        box.setTextFormat(Qt::PlainText);
        return box.exec();
    }
};

} // namespace

std::unique_ptr<Dialogs> MakeDialogs() {
    return std::make_unique<QtDialogs>();
}

} // namespace tarn
