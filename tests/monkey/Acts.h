// What a user may do next: keys, clicks, menus, windows, shows, waiting, and the other program.
#pragma once

#include "Inventory.h"
#include "OneFile.h"
#include "World.h"

#include <QTimer>

#include <functional>
#include <map>
#include <string>

namespace tarn::testing {

class Acts {
public:
    Acts(World& world, Dice& dice, Inventory& inventory, OneFile& oneFile, std::uint64_t seed);

    // One act; what it was goes through `onSaid` before it is done.
    void Do(int number);

    std::function<void(const std::string&)> onSaid;
    std::string found;                 // by the looks between the parts of an act
    bool carries = false;              // the act may bring a note along to another file
    std::map<std::string, int> counts; // of each kind

private:
    using Act = void (Acts::*)();
    void Say(const std::string& what) const { onSaid(what); }

    void PressKey();
    void ClickControl();
    void UseMenu();
    void SelectRow();
    void EnterFolder();
    void Write();
    void UseWindow();
    void OpenWindow();
    void CloseWindow();
    void RunShow();
    void OtherProgram();
    void ChangeOneOf(const std::vector<fs::path>& files);
    void UsePicture();
    void DragIn(QWidget& widget, QPoint from);
    void StepImage();
    void Wait();
    void Quit();

    void Use(QWidget& widget);
    void TypeInto(QWidget& widget);
    void KeyInto(QWidget& widget);
    void AnswerPopup();
    void AnswerModal();
    void OnPump();
    void InShow();
    void InBatch();
    bool MayUse(const QWidget& widget) const;
    bool MayTrigger(const QAction& entry) const;
    std::vector<QWidget*> Windows() const;

    World& m;
    Dice& m_dice;
    Inventory& m_inventory;
    OneFile& m_oneFile;
    std::uint64_t m_seed;
    int m_number = 0;
    int m_pumps = 0;
    int m_inShow = 0; // acts left in this show
    bool m_acting = false;
    QTimer m_modal; // answers what an act waits for
};

} // namespace tarn::testing
