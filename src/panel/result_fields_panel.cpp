#include "panel/result_fields_panel.h"

#include <QComboBox>
#include <QHeaderView>
#include <QKeyEvent>
#include <QStyledItemDelegate>
#include <QToolButton>
#include <QTreeWidget>
#include <QVBoxLayout>
#include <functional>

#include "panel/result_field_rows_p.h"
#include "panel/result_fields_editor.h"
#include "query/query.h"

namespace ts4 {

using detail::rfcSorting;
using detail::Title;

namespace {

// Edits the sorting column with a combo box; the other columns are read-only.
// The choice goes straight to the query, whose notification then updates the row.
class TSortingDelegate : public QStyledItemDelegate {
 public:
  TSortingDelegate(QObject* parent, std::function<QStringList()> titles,
                   std::function<void(int row, TSortingType sorting)> chosen)
      : QStyledItemDelegate(parent), titles_(std::move(titles)), chosen_(std::move(chosen)) {}

  QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& /*option*/,
                        const QModelIndex& index) const override {
    if (index.column() != rfcSorting) return nullptr;
    auto* box = new QComboBox(parent);
    box->addItems(titles_());
    // A choice is final: no need to leave the cell to commit it.
    connect(box, &QComboBox::activated, this, &TSortingDelegate::CommitAndClose);
    return box;
  }
  // As wide as the box needs: the column fits its texts, not the box's
  // arrow, so the box grows over the column before it.
  void updateEditorGeometry(QWidget* editor, const QStyleOptionViewItem& option,
                            const QModelIndex& /*index*/) const override {
    QRect rect = option.rect;
    const int width = editor->sizeHint().width();
    if (rect.width() < width) {
      if (option.direction == Qt::RightToLeft)
        rect.setWidth(width);
      else
        rect.setLeft(rect.right() + 1 - width);
    }
    editor->setGeometry(rect);
  }
  void setEditorData(QWidget* editor, const QModelIndex& index) const override {
    static_cast<QComboBox*>(editor)->setCurrentIndex(index.data(Qt::UserRole).toInt());
  }
  void setModelData(QWidget* editor, QAbstractItemModel* /*model*/, const QModelIndex& index) const override {
    const int chosen = static_cast<QComboBox*>(editor)->currentIndex();
    if (chosen >= 0 && chosen <= static_cast<int>(stDescending))
      chosen_(index.row(), static_cast<TSortingType>(chosen));
  }

 private:
  void CommitAndClose() {
    auto* editor = qobject_cast<QWidget*>(sender());
    emit commitData(editor);
    emit closeEditor(editor);
  }

  std::function<QStringList()> titles_;
  std::function<void(int, TSortingType)> chosen_;
};

}  // namespace

TWResultFieldsPanel::TWResultFieldsPanel(QWidget* parent)
    : QWidget(parent), list_(new QTreeWidget(this)), editButton_(new QToolButton(this)) {
  list_->setObjectName(QStringLiteral("resultFieldList"));
  list_->setColumnCount(3);
  list_->setRootIsDecorated(false);
  list_->setUniformRowHeights(true);
  list_->setAllColumnsShowFocus(true);
  // The expression takes what the caption and the sorting leave.
  list_->header()->setStretchLastSection(false);
  list_->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
  list_->header()->setSectionResizeMode(detail::rfcExpression, QHeaderView::Stretch);
  list_->setEditTriggers(QAbstractItemView::SelectedClicked);
  list_->installEventFilter(this);
  list_->setItemDelegate(new TSortingDelegate(
      list_,
      [this] {
        QStringList titles;
        for (TSortingType sorting : {stNoSort, stAscending, stDescending})
          titles.append(query_ != nullptr ? detail::SortingTitle(*query_, sorting) : QString());
        return titles;
      },
      [this](int row, TSortingType sorting) { SortingChosen(row, sorting); }));
  connect(list_, &QTreeWidget::itemDoubleClicked, this, [this] { Execute(); });

  editButton_->setObjectName(QStringLiteral("editButton"));
  editButton_->setToolButtonStyle(Qt::ToolButtonTextOnly);
  connect(editButton_, &QToolButton::clicked, this, [this] { Execute(); });

  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(list_);
  layout->addWidget(editButton_, 0, Qt::AlignLeading);
  ShowCaptions();
  ShowFields();
}

TWResultFieldsPanel::~TWResultFieldsPanel() {
  SetQuery(nullptr);
}

void TWResultFieldsPanel::SetQuery(TWQuery* query) {
  if (query == query_) return;
  if (query_ != nullptr) {
    query_->RemoveObserver(this);
    RemoveFreeNotification(*query_);
  }
  query_ = query;
  if (query_ != nullptr) {
    query_->AddObserver(this);
    FreeNotification(*query_);
  }
  ShowCaptions();
  ShowFields();
}

bool TWResultFieldsPanel::Execute() {
  if (query_ == nullptr) return false;
  TWResultFieldsEditor editor(*query_, this);
  connect(&editor, &TWResultFieldsEditor::OnRFEHelpClick, this, &TWResultFieldsPanel::OnRFEHelpClick);
  return editor.exec() == QDialog::Accepted;
}

QSize TWResultFieldsPanel::sizeHint() const {
  // Room for the three columns of a typical field.
  return QWidget::sizeHint().expandedTo(QSize(fontMetrics().averageCharWidth() * 56, 0));
}

bool TWResultFieldsPanel::eventFilter(QObject* watched, QEvent* event) {
  if (watched == list_ && event->type() == QEvent::KeyPress &&
      static_cast<QKeyEvent*>(event)->key() == Qt::Key_F2 && list_->currentItem() != nullptr) {
    list_->editItem(list_->currentItem(), rfcSorting);
    return true;
  }
  return QWidget::eventFilter(watched, event);
}

void TWResultFieldsPanel::QueryReset() {
  ShowFields();
}

void TWResultFieldsPanel::QueryChanged(TQueryAspects aspects) {
  if (aspects.Contains(qaCaptions)) ShowCaptions();
  if (!(aspects & TQueryAspects{qaResultFields, qaStructure, qaCaptions}).Empty()) ShowFields();
}

void TWResultFieldsPanel::Notification(TWComponent& component) {
  // The query is being destroyed: it has let go of its observers already.
  if (&component != static_cast<TWComponent*>(query_)) return;
  query_ = nullptr;
  ShowFields();
}

void TWResultFieldsPanel::ShowCaptions() {
  if (query_ == nullptr) return;
  detail::SetResultFieldHeaders(*list_, *query_);
  editButton_->setText(Title(*query_, "ttlRFETitle"));
}

void TWResultFieldsPanel::ShowFields() {
  editButton_->setEnabled(query_ != nullptr);
  if (query_ == nullptr) {
    list_->clear();
    return;
  }
  detail::ShowResultFields(*list_, query_->QResult().ResultFields(), *query_);
}

void TWResultFieldsPanel::SortingChosen(int row, TSortingType sorting) {
  if (query_ == nullptr) return;
  TRFieldList& fields = query_->QResult().ResultFields();
  if (row >= 0 && row < fields.Count()) fields.SetSorting(row, sorting);
}

}  // namespace ts4
