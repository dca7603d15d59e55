#include "widgets/FolderTreeModel.h"

#include "common/paths.h"
#include "common/text.h"
#include "platform/QtText.h"
#include "widgets/OwnFiles.h"

#include <algorithm>

namespace tarn {

struct FolderTreeModel::Node {
    std::string name;
    std::string path;
    Node* parent = nullptr;
    std::vector<std::unique_ptr<Node>> children; // sorted by name in any case
    bool read = false;
    int row = 0; // among its parent's children

    void Number() {
        for (std::size_t i = 0; i < children.size(); ++i) children[i]->row = static_cast<int>(i);
    }
    std::unique_ptr<Node> MakeChild(const std::string& childName) {
        auto child = std::make_unique<Node>();
        child->name = childName;
        child->path = JoinPath(path, childName);
        child->parent = this;
        return child;
    }
};

FolderTreeModel::FolderTreeModel(const Files& files)
    : m_files(files), m_root(std::make_unique<Node>()) {
    m_root->name = kRoot;
    m_root->path = kRoot;
}

FolderTreeModel::~FolderTreeModel() = default;

FolderTreeModel::Node* FolderTreeModel::NodeAt(const QModelIndex& index) const {
    return static_cast<Node*>(index.internalPointer());
}

QModelIndex FolderTreeModel::IndexAt(Node* node) const {
    return createIndex(node->row, 0, node);
}

std::string FolderTreeModel::PathOf(const QModelIndex& index) const {
    return index.isValid() ? NodeAt(index)->path : std::string();
}

void FolderTreeModel::Insert(Node* node, const std::string& name) {
    const auto before = [](const std::unique_ptr<Node>& child, const std::string& key) {
        return FoldCase(child->name) < key;
    };
    auto& children = node->children;
    const auto at = std::lower_bound(children.begin(), children.end(), FoldCase(name), before);
    const int row = static_cast<int>(at - children.begin());
    beginInsertRows(IndexAt(node), row, row);
    children.insert(at, node->MakeChild(name));
    node->Number();
    endInsertRows();
}

FolderTreeModel::Node* FolderTreeModel::ChildNamed(Node* node, const std::string& name) {
    for (const auto& child : node->children)
        if (child->name == name) return child.get();
    return nullptr;
}

QModelIndex FolderTreeModel::IndexOf(const std::string& path) {
    Node* node = m_root.get();
    for (const std::string& part : PathParts(path)) {
        if (part.empty()) continue;
        if (!node->read) fetchMore(IndexAt(node));
        Node* next = ChildNamed(node, part);
        if (!next && m_files.IsFolder(JoinPath(node->path, part))) {
            Insert(node, part);
            next = ChildNamed(node, part);
        }
        if (!next) return {};
        node = next;
    }
    return IndexAt(node);
}

bool FolderTreeModel::Reread(const QModelIndex& index) {
    Node* node = NodeAt(index);
    const std::vector<std::string> now = SortedFolders(*node);
    const auto& children = node->children;
    const bool same = std::equal(
        now.begin(), now.end(), children.begin(), children.end(),
        [](const std::string& name, const std::unique_ptr<Node>& c) { return c->name == name; });
    if (same) return false;
    if (!children.empty()) {
        beginRemoveRows(index, 0, static_cast<int>(children.size()) - 1);
        node->children.clear();
        endRemoveRows();
    }
    fetchMore(index);
    return true;
}

std::vector<std::string> FolderTreeModel::SortedFolders(const Node& node) const {
    std::vector<std::string> names = m_files.FolderNames(node.path);
    std::sort(names.begin(), names.end(),
              [](const std::string& a, const std::string& b) { return FoldCase(a) < FoldCase(b); });
    return names;
}

QModelIndex FolderTreeModel::index(int row, int column, const QModelIndex& parent) const {
    if (column != 0 || row < 0) return {};
    if (!parent.isValid()) return row == 0 ? createIndex(0, 0, m_root.get()) : QModelIndex();
    const Node* node = NodeAt(parent);
    if (row >= static_cast<int>(node->children.size())) return {};
    return createIndex(row, 0, node->children[static_cast<std::size_t>(row)].get());
}

QModelIndex FolderTreeModel::parent(const QModelIndex& child) const {
    Node* above = child.isValid() ? NodeAt(child)->parent : nullptr;
    return above ? IndexAt(above) : QModelIndex();
}

// A folder takes files of ours.
Qt::ItemFlags FolderTreeModel::flags(const QModelIndex& index) const {
    const Qt::ItemFlags own = QAbstractItemModel::flags(index);
    return index.isValid() ? own | Qt::ItemIsDropEnabled : own;
}

QStringList FolderTreeModel::mimeTypes() const {
    return {QString::fromLatin1(kOwnFiles)};
}

int FolderTreeModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? static_cast<int>(NodeAt(parent)->children.size()) : 1;
}

int FolderTreeModel::columnCount(const QModelIndex&) const {
    return 1;
}

QVariant FolderTreeModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid()) return {};
    if (role == Qt::DisplayRole) return ToQt(NodeAt(index)->name);
    if (role == Qt::ToolTipRole) return ToToolTip(NodeAt(index)->path);
    if (role == Qt::DecorationRole) return m_icon;
    return {};
}

bool FolderTreeModel::hasChildren(const QModelIndex& parent) const {
    if (!parent.isValid()) return true;
    const Node* node = NodeAt(parent);
    return !node->read || !node->children.empty();
}

bool FolderTreeModel::canFetchMore(const QModelIndex& parent) const {
    return parent.isValid() && !NodeAt(parent)->read;
}

void FolderTreeModel::fetchMore(const QModelIndex& parent) {
    Node* node = NodeAt(parent);
    node->read = true;
    const std::vector<std::string> names = SortedFolders(*node);
    if (names.empty()) return;
    beginInsertRows(parent, 0, static_cast<int>(names.size()) - 1);
    for (const std::string& name : names) node->children.push_back(node->MakeChild(name));
    node->Number();
    endInsertRows();
}

} // namespace tarn
