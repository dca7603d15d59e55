// All folders from the root on, each read when it is opened.
#pragma once

#include "platform/Files.h"

#include <QAbstractItemModel>
#include <QIcon>

#include <memory>
#include <string>
#include <vector>

namespace tarn {

class FolderTreeModel : public QAbstractItemModel {
public:
    explicit FolderTreeModel(const Files& files);
    ~FolderTreeModel() override;

    void SetIcon(const QIcon& icon) { m_icon = icon; }
    std::string PathOf(const QModelIndex& index) const;

    // The place of an existing folder, read in on the way, hidden ones too; invalid when it is not
    // there.
    QModelIndex IndexOf(const std::string& path);

    // Reads a folder anew; true when it holds other folders than before: places in it are lost.
    bool Reread(const QModelIndex& index);

    QModelIndex index(int row, int column, const QModelIndex& parent) const override;
    QModelIndex parent(const QModelIndex& child) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    QStringList mimeTypes() const override;
    int rowCount(const QModelIndex& parent) const override;
    int columnCount(const QModelIndex& parent) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    bool hasChildren(const QModelIndex& parent) const override;
    bool canFetchMore(const QModelIndex& parent) const override;
    void fetchMore(const QModelIndex& parent) override;

private:
    struct Node;
    Node* NodeAt(const QModelIndex& index) const;
    QModelIndex IndexAt(Node* node) const;
    Node* ChildNamed(Node* node, const std::string& name);
    std::vector<std::string> SortedFolders(const Node& node) const;
    void Insert(Node* node, const std::string& name);

    const Files& m_files;
    std::unique_ptr<Node> m_root; // stands for kRoot
    QIcon m_icon;
};

} // namespace tarn
