// The same tree as a QStandardItemModel with three columns and an index over its rows.
#pragma once

#if HAVE_QT5GUI
#include <QHash>
#include <QStandardItemModel>
#include <QString>
#include <functional>
#include <memory>
#include <string_view>
#include <vector>

namespace zelBenchmarks {

class QtTree {
 public:
  using Char = char16_t;
  using View = std::u16string_view;
  static constexpr const char* name = "qt";

  QtTree() { model_.setColumnCount(3); }

  void add(View parent, View key, View value, View data, View unit) {
    QStandardItem* above = parent.empty() ? model_.invisibleRootItem() : findParent(parent);
    append(above, text(key), text(value), text(data), text(unit));
  }
  std::size_t size() const { return static_cast<std::size_t>(index_.size()); }
  std::size_t dataLength(View key) const {
    const QStandardItem* item = find(key);
    QStandardItem* above = item->parent() ? item->parent() : model_.invisibleRootItem();
    return static_cast<std::size_t>(above->child(item->row(), 1)->text().size());
  }
  std::unique_ptr<QtTree> clone() const {
    auto copy = std::make_unique<QtTree>();
    std::vector<std::pair<QStandardItem*, QStandardItem*>> open{
        {model_.invisibleRootItem(), copy->model_.invisibleRootItem()}};
    while (!open.empty()) {
      const auto [from, to] = open.back();
      open.pop_back();
      for (int row = 0; row < from->rowCount(); ++row) {
        QStandardItem* child = from->child(row, 0);
        QStandardItem* made = copy->append(to, child->data().toString(), child->text(),
                                           from->child(row, 1)->text(), from->child(row, 2)->text());
        if (child->hasChildren()) open.emplace_back(child, made);
      }
    }
    return copy;
  }
  bool remove(View key) {
    QStandardItem* item = find(key);
    if (!item) return false;
    lastParent_ = nullptr;
    std::vector<QStandardItem*> open{item};
    while (!open.empty()) {
      QStandardItem* leaving = open.back();
      open.pop_back();
      for (int row = 0; row < leaving->rowCount(); ++row) open.push_back(leaving->child(row, 0));
      index_.remove(leaving->data().toString().toCaseFolded());
      onRemoved_(leaving);
    }
    QStandardItem* above = item->parent() ? item->parent() : model_.invisibleRootItem();
    above->removeRow(item->row());
    return true;
  }
  bool removeFirstChild(View parent) {
    const QStandardItem* first = find(parent)->child(0, 0);
    if (!first) return false;
    const QString key = first->data().toString();
    return remove({reinterpret_cast<const char16_t*>(key.utf16()), static_cast<std::size_t>(key.size())});
  }
  std::size_t added() const { return added_; }
  std::size_t removed() const { return removed_; }

 private:
  static QString text(View view) {
    return QString(reinterpret_cast<const QChar*>(view.data()), static_cast<int>(view.size()));
  }
  QStandardItem* find(View key) const { return index_.value(text(key).toCaseFolded()); }
  QStandardItem* findParent(View key) {
    if (!lastParent_ || lastParentKey_ != text(key)) {
      lastParent_ = find(key);
      lastParentKey_ = text(key);
    }
    return lastParent_;
  }
  QStandardItem* append(QStandardItem* above, const QString& key, const QString& value, const QString& data,
                        const QString& unit) {
    auto* item = new QStandardItem(value);
    item->setData(key);
    above->appendRow({item, new QStandardItem(data), new QStandardItem(unit)});
    index_.insert(key.toCaseFolded(), item);
    onAdded_(item);
    return item;
  }

  QStandardItemModel model_;
  QHash<QString, QStandardItem*> index_;
  QStandardItem* lastParent_ = nullptr;
  QString lastParentKey_;
  std::size_t added_ = 0;
  std::size_t removed_ = 0;
  std::function<void(QStandardItem*)> onAdded_ = [this](QStandardItem*) { ++added_; };
  std::function<void(QStandardItem*)> onRemoved_ = [this](QStandardItem*) { ++removed_; };
};

}  // namespace zelBenchmarks
#endif
