// The result fields editor: its widgets, their layout, and how they show the copy.
#include "panel/result_fields_editor.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QDropEvent>
#include <QEvent>
#include <QFormLayout>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMessageBox>
#include <QPushButton>
#include <QShortcut>
#include <QSignalBlocker>
#include <QStyle>
#include <QStyleOption>
#include <QToolButton>
#include <QTreeWidget>
#include <QVBoxLayout>

#include "panel/qt_strings_p.h"
#include "panel/result_field_rows_p.h"
#include "query/query.h"
#include "structure/field.h"
#include "structure/field_group.h"
#include "structure/structure.h"

namespace ts4 {

using detail::ToQ;

namespace {

// The structure field's ID on an item of the available fields (groups have none).
constexpr int FieldIDRole = Qt::UserRole;
// The field's position in the list, on an item of the sorted fields.
constexpr int FieldIndexRole = Qt::UserRole;

// Captions of the aggregate choices, by TAggregateFunction.
constexpr std::array<std::string_view, 6> AggregateTitles = {
    "ttlAsIs", "ttlSUMCaption", "ttlCOUNTCaption", "ttlMINCaption", "ttlMAXCaption", "ttlAVERAGECaption"};

// The operator buttons, by TFormulaOperator: they show the operator as the formula writes it.
struct TOperatorButton {
  const char* Name;
  const char* Symbol;
  std::string_view Hint;
};
constexpr std::array<TOperatorButton, 4> OperatorButtons = {{{"addButton", "+", "ttlAddRFldHint"},
                                                             {"subtractButton", "-", "ttlSubRFldHint"},
                                                             {"multiplyButton", "*", "ttlMulRFldHint"},
                                                             {"divideButton", "/", "ttlDivRFldHint"}}};

// A tool button known by its hint, which also names it for screen readers.
QToolButton* MakeToolButton(QWidget* parent, const char* name, const QString& hint) {
  auto* button = new QToolButton(parent);
  button->setObjectName(QLatin1String(name));
  button->setToolTip(hint);
  button->setAccessibleName(hint);
  return button;
}

}  // namespace

TWResultFieldsEditor::TWResultFieldsEditor(TWQuery& query, QWidget* parent)
    : QDialog(parent), query_(query), fields_(query.DbStruct()) {
  fields_.Assign(query.QResult().ResultFields());
  ConfirmDelete = [this](const QString& question) {
    return QMessageBox::question(this, windowTitle(), question) == QMessageBox::Yes;
  };
  ShowError = [this](const QString& message) { QMessageBox::warning(this, windowTitle(), message); };
  setObjectName(QStringLiteral("ResultFieldsEditor"));
  setWindowTitle(Title("ttlRFETitle"));
  CreateWidgets();
  LayOut();
  Connect();
  ShowIcons();
  FillAvailableFields();
  ShowFields();
  SelectField(fields_.Count() > 0 ? 0 : -1);
}

TWResultFieldsEditor::~TWResultFieldsEditor() = default;

QString TWResultFieldsEditor::Title(std::string_view name) const {
  return detail::Title(query_, name);
}

// Widgets are made in the order Tab visits them.
void TWResultFieldsEditor::CreateWidgets() {
  availableFields_ = new QTreeWidget(this);
  availableFields_->setObjectName(QStringLiteral("availableFields"));
  availableFields_->setHeaderHidden(true);
  availableFields_->setSelectionMode(QAbstractItemView::ExtendedSelection);

  makeButton_ = MakeToolButton(this, "makeButton", Title("ttlMakeFldHint"));
  for (std::size_t i = 0; i < OperatorButtons.size(); ++i) {
    const TOperatorButton& kind = OperatorButtons[i];
    operatorButtons_[i] = MakeToolButton(this, kind.Name, Title(kind.Hint));
    operatorButtons_[i]->setText(QLatin1String(kind.Symbol));
  }
  addFieldsButton_ = new QPushButton(Title("ttlAddBtnCaption"), this);
  addFieldsButton_->setObjectName(QStringLiteral("addFieldsButton"));
  addFieldsButton_->setToolTip(Title("ttlAddBtnHint"));
  addFieldsButton_->setAutoDefault(false);  // Enter stays with OK

  resultFields_ = new QTreeWidget(this);
  resultFields_->setObjectName(QStringLiteral("resultFields"));
  resultFields_->setColumnCount(2);
  resultFields_->setRootIsDecorated(false);
  resultFields_->setUniformRowHeights(true);
  resultFields_->setAllColumnsShowFocus(true);
  detail::SetResultFieldHeaders(*resultFields_, query_);
  resultFields_->setDragDropMode(QAbstractItemView::InternalMove);
  resultFields_->viewport()->installEventFilter(this);
  newButton_ = MakeToolButton(this, "newButton", Title("ttlNewFldHint"));
  deleteButton_ = MakeToolButton(this, "deleteButton", Title("ttlDelFldHint"));

  captionEdit_ = new QLineEdit(this);
  captionEdit_->setObjectName(QStringLiteral("captionEdit"));
  expressionEdit_ = new QLineEdit(this);
  expressionEdit_->setObjectName(QStringLiteral("expressionEdit"));
  aggregateBox_ = new QComboBox(this);
  aggregateBox_->setObjectName(QStringLiteral("aggregateBox"));
  for (std::string_view title : AggregateTitles) aggregateBox_->addItem(Title(title));
  sortingBox_ = new QComboBox(this);
  sortingBox_->setObjectName(QStringLiteral("sortingBox"));
  sortingBox_->setToolTip(Title("ttlSortRFldHint"));
  for (TSortingType sorting : {stNoSort, stAscending, stDescending})
    sortingBox_->addItem(detail::SortingTitle(query_, sorting));

  sortedFields_ = new QListWidget(this);
  sortedFields_->setObjectName(QStringLiteral("sortedFields"));
  // As high as the field's settings beside it, not as a list would like.
  sortedFields_->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Ignored);
  sortedFields_->setMinimumHeight(fontMetrics().height() * 3);
  sortUpButton_ = MakeToolButton(this, "sortUpButton", QString());
  sortDownButton_ = MakeToolButton(this, "sortDownButton", QString());
  justSorting_ = new QCheckBox(Title("ttlJustSorting"), this);
  justSorting_->setObjectName(QStringLiteral("justSorting"));

  buttons_ =
      new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel | QDialogButtonBox::Help, this);
  buttons_->button(QDialogButtonBox::Ok)->setText(Title("ttlOkBtnCaption"));
  buttons_->button(QDialogButtonBox::Cancel)->setText(Title("ttlCancelBtnCaption"));
  buttons_->button(QDialogButtonBox::Help)->setText(Title("ttlHelpBtnCaption"));
}

void TWResultFieldsEditor::LayOut() {
  auto label = [this](std::string_view title, QWidget* buddy) {
    auto* made = new QLabel(Title(title), this);
    made->setBuddy(buddy);
    return made;
  };
  auto column = [](std::initializer_list<QWidget*> widgets) {
    auto* layout = new QVBoxLayout;
    for (QWidget* widget : widgets) layout->addWidget(widget);
    layout->addStretch();
    return layout;
  };

  auto* available = new QVBoxLayout;
  available->addWidget(availableFields_, 1);
  available->addWidget(addFieldsButton_, 0, Qt::AlignTrailing);

  auto* between = new QVBoxLayout;
  between->addWidget(makeButton_);
  between->addSpacing(style()->pixelMetric(QStyle::PM_LayoutVerticalSpacing) * 2);
  for (QToolButton* button : operatorButtons_) between->addWidget(button);
  between->addStretch();

  auto* list = new QHBoxLayout;
  list->addWidget(resultFields_, 1);
  list->addLayout(column({newButton_, deleteButton_}));

  auto* field = new QFormLayout;
  field->addRow(label("ttlFieldNmColName", captionEdit_), captionEdit_);
  auto* expression = new QHBoxLayout;
  expression->addWidget(expressionEdit_, 1);
  expression->addWidget(aggregateBox_);
  field->addRow(label("ttlFieldExprColName", expressionEdit_), expression);
  field->addRow(label("ttlSortingColName", sortingBox_), sortingBox_);

  auto* sortedList = new QHBoxLayout;
  sortedList->addWidget(sortedFields_, 1);
  sortedList->addLayout(column({sortUpButton_, sortDownButton_}));
  auto* sorted = new QVBoxLayout;
  sorted->addWidget(label("ttlSortCaption", sortedFields_));
  sorted->addLayout(sortedList, 1);
  sorted->addWidget(justSorting_);

  auto* details = new QHBoxLayout;
  details->addLayout(field, 3);
  details->addLayout(sorted, 2);

  // Captions in the first row, so that the buttons between start level with both lists.
  auto* grid = new QGridLayout;
  grid->addWidget(label("ttlFields", availableFields_), 0, 0);
  grid->addWidget(label("ttlResFields", resultFields_), 0, 2);
  grid->addLayout(available, 1, 0, 2, 1);
  grid->addLayout(between, 1, 1);
  grid->addLayout(list, 1, 2);
  grid->addLayout(details, 2, 2);
  grid->setRowStretch(1, 1);
  grid->setColumnStretch(0, 2);
  grid->setColumnStretch(2, 5);

  auto* layout = new QVBoxLayout(this);
  layout->addLayout(grid, 1);
  layout->addWidget(buttons_);
  const QFontMetrics metrics = fontMetrics();
  resize(sizeHint().expandedTo(QSize(metrics.averageCharWidth() * 110, metrics.height() * 34)));
}

void TWResultFieldsEditor::Connect() {
  connect(availableFields_, &QTreeWidget::itemSelectionChanged, this, &TWResultFieldsEditor::UpdateActions);
  connect(availableFields_, &QTreeWidget::currentItemChanged, this, &TWResultFieldsEditor::UpdateActions);
  connect(availableFields_, &QTreeWidget::itemDoubleClicked, this, [this](QTreeWidgetItem* item) {
    if (FieldOf(item) != nullptr) MakeField();
  });
  connect(makeButton_, &QToolButton::clicked, this, &TWResultFieldsEditor::MakeField);
  for (std::size_t i = 0; i < operatorButtons_.size(); ++i) {
    connect(operatorButtons_[i], &QToolButton::clicked, this,
            [this, i] { CombineField(static_cast<TFormulaOperator>(i)); });
  }
  connect(addFieldsButton_, &QPushButton::clicked, this, &TWResultFieldsEditor::AddSelectedFields);

  connect(resultFields_, &QTreeWidget::currentItemChanged, this, [this] {
    ShowCurrent();
    UpdateActions();
  });
  for (const auto& [key, delta] : {std::pair{Qt::Key_Up, -1}, std::pair{Qt::Key_Down, 1}}) {
    auto* shortcut = new QShortcut(QKeySequence(Qt::CTRL | key), resultFields_);
    shortcut->setContext(Qt::WidgetShortcut);
    const int by = delta;  // a structured binding cannot be captured everywhere
    connect(shortcut, &QShortcut::activated, this, [this, by] { MoveField(by); });
  }
  connect(newButton_, &QToolButton::clicked, this, &TWResultFieldsEditor::NewField);
  connect(deleteButton_, &QToolButton::clicked, this, &TWResultFieldsEditor::DeleteField);
  // Programmatic changes count as the user's: ShowCurrent blocks the signals when it fills them.
  connect(captionEdit_, &QLineEdit::textChanged, this, &TWResultFieldsEditor::CaptionEdited);
  connect(expressionEdit_, &QLineEdit::editingFinished, this, [this] { (void)ApplyExpression(); });
  connect(aggregateBox_, &QComboBox::currentIndexChanged, this, &TWResultFieldsEditor::AggregateChosen);
  connect(sortingBox_, &QComboBox::currentIndexChanged, this, &TWResultFieldsEditor::SortingChosen);

  connect(sortedFields_, &QListWidget::currentRowChanged, this, &TWResultFieldsEditor::UpdateActions);
  connect(sortUpButton_, &QToolButton::clicked, this, [this] { MoveSorted(-1); });
  connect(sortDownButton_, &QToolButton::clicked, this, [this] { MoveSorted(1); });
  connect(justSorting_, &QCheckBox::toggled, this, [this](bool on) { fields_.SetJustSorting(on); });

  connect(buttons_, &QDialogButtonBox::accepted, this, &TWResultFieldsEditor::accept);
  connect(buttons_, &QDialogButtonBox::rejected, this, &TWResultFieldsEditor::reject);
  connect(buttons_, &QDialogButtonBox::helpRequested, this, &TWResultFieldsEditor::OnRFEHelpClick);
}

bool TWResultFieldsEditor::eventFilter(QObject* watched, QEvent* event) {
  if (watched != resultFields_->viewport() || event->type() != QEvent::Drop)
    return QDialog::eventFilter(watched, event);
  auto* drop = static_cast<QDropEvent*>(event);
  const int from = CurrentRow();
  const QModelIndex at = resultFields_->indexAt(drop->position().toPoint());
  // The place between rows it lands at: below the middle of a row is after it.
  int slot = fields_.Count();
  if (at.isValid())
    slot = at.row() + (drop->position().y() > resultFields_->visualRect(at).center().y() ? 1 : 0);
  // Nothing is taken from the list when the drag ends: the copy moved the field.
  drop->setDropAction(Qt::IgnoreAction);
  drop->accept();
  if (from >= 0) MoveFieldTo(from, slot > from ? slot - 1 : slot);
  return true;
}

void TWResultFieldsEditor::changeEvent(QEvent* event) {
  if (event->type() == QEvent::LayoutDirectionChange || event->type() == QEvent::StyleChange) ShowIcons();
  QDialog::changeEvent(event);
}

void TWResultFieldsEditor::ShowIcons() {
  // The option carries the dialog's direction: "forward" points into the result fields.
  QStyleOption option;
  option.initFrom(this);
  QStyle& look = *style();
  makeButton_->setIcon(look.standardIcon(QStyle::SP_ArrowForward, &option, this));
  sortUpButton_->setIcon(look.standardIcon(QStyle::SP_ArrowUp, &option, this));
  sortDownButton_->setIcon(look.standardIcon(QStyle::SP_ArrowDown, &option, this));
  newButton_->setIcon(QIcon::fromTheme(QStringLiteral("document-new"),
                                       look.standardIcon(QStyle::SP_FileIcon, &option, this)));
  deleteButton_->setIcon(QIcon::fromTheme(QStringLiteral("edit-delete"),
                                          look.standardIcon(QStyle::SP_TrashIcon, &option, this)));
}

void TWResultFieldsEditor::FillAvailableFields() {
  const TWCustomDBStructure* structure = query_.DbStruct();
  if (structure == nullptr) return;
  auto add = [this](QTreeWidgetItem* group, const TDSField& field) {
    if (!field.UseInResult()) return;
    auto* item = group != nullptr ? new QTreeWidgetItem(group) : new QTreeWidgetItem(availableFields_);
    item->setText(0, ToQ(field.DisplayName()));
    item->setData(0, FieldIDRole, field.ID());
  };
  auto addUngrouped = [&] {
    const TDSFieldGroup& root = structure->RootGroup();
    for (int i = 0; i < root.FieldCount(); ++i) add(nullptr, *root.Fields(i));
  };
  if (structure->RootFieldsFirst()) addUngrouped();
  for (int g = 0; g < structure->FieldGroupCount(); ++g) {
    const TDSFieldGroup& group = *structure->FieldGroups(g);
    auto* item = new QTreeWidgetItem(availableFields_, {ToQ(group.GroupName())});
    for (int i = 0; i < group.FieldCount(); ++i) add(item, *group.Fields(i));
    if (item->childCount() == 0) delete item;
  }
  if (!structure->RootFieldsFirst()) addUngrouped();
  availableFields_->expandAll();
}

// ---- Showing the copy -------------------------------------------------------------

void TWResultFieldsEditor::ShowFields() {
  detail::ShowResultFields(*resultFields_, fields_, query_);
  ShowSorted();
  const QSignalBlocker blocker(justSorting_);
  justSorting_->setChecked(fields_.JustSorting());
  UpdateActions();
}

void TWResultFieldsEditor::ShowCurrent() {
  const TResultField* field = CurrentField();
  const QSignalBlocker captionBlocker(captionEdit_);
  const QSignalBlocker aggregateBlocker(aggregateBox_);
  const QSignalBlocker sortingBlocker(sortingBox_);
  const int row = CurrentRow();
  captionEdit_->setText(field != nullptr ? ToQ(field->Caption()) : QString());
  captionEdit_->setPlaceholderText(field != nullptr ? ToQ(fields_.GetCaption(row)) : QString());
  expressionEdit_->setText(field != nullptr ? ToQ(field->GetExpression()) : QString());
  aggregateBox_->setCurrentIndex(field != nullptr ? static_cast<int>(field->Aggregate()) : 0);
  sortingBox_->setCurrentIndex(field != nullptr ? static_cast<int>(field->Sorting()) : 0);
  for (QWidget* editor : {static_cast<QWidget*>(captionEdit_), static_cast<QWidget*>(expressionEdit_),
                          static_cast<QWidget*>(aggregateBox_), static_cast<QWidget*>(sortingBox_)})
    editor->setEnabled(field != nullptr);
}

void TWResultFieldsEditor::ShowSorted() {
  const QListWidgetItem* current = sortedFields_->currentItem();
  const int keep = current != nullptr ? current->data(FieldIndexRole).toInt() : -1;
  const QSignalBlocker blocker(sortedFields_);
  sortedFields_->clear();
  for (TResultField* field : fields_.SortedFields()) {
    const int index = fields_.IndexOf(field);
    auto* item = new QListWidgetItem(ToQ(fields_.GetCaption(index)), sortedFields_);
    item->setData(FieldIndexRole, index);
    if (index == keep) sortedFields_->setCurrentItem(item);
  }
}

void TWResultFieldsEditor::UpdateActions() {
  const bool available = AvailableField() != nullptr;
  const bool field = CurrentField() != nullptr;
  makeButton_->setEnabled(available);
  for (QToolButton* button : operatorButtons_) button->setEnabled(available && field);
  addFieldsButton_->setEnabled(!availableFields_->selectedItems().isEmpty());
  deleteButton_->setEnabled(field);
  const int sorted = sortedFields_->currentRow();
  sortUpButton_->setEnabled(sorted > 0);
  sortDownButton_->setEnabled(sorted >= 0 && sorted < sortedFields_->count() - 1);
}

void TWResultFieldsEditor::SelectField(int row) {
  resultFields_->setCurrentItem(row >= 0 ? resultFields_->topLevelItem(row) : nullptr);
  ShowCurrent();
  UpdateActions();
}

int TWResultFieldsEditor::CurrentRow() const {
  QTreeWidgetItem* item = resultFields_->currentItem();
  return item != nullptr ? resultFields_->indexOfTopLevelItem(item) : -1;
}

TResultField* TWResultFieldsEditor::CurrentField() const {
  const int row = CurrentRow();
  return row >= 0 && row < fields_.Count() ? fields_[row] : nullptr;
}

TDSField* TWResultFieldsEditor::FieldOf(const QTreeWidgetItem* item) const {
  const TWCustomDBStructure* structure = query_.DbStruct();
  if (item == nullptr || structure == nullptr) return nullptr;
  const QVariant id = item->data(0, FieldIDRole);
  return id.isValid() ? structure->FieldByID(id.toInt()) : nullptr;
}

TDSField* TWResultFieldsEditor::AvailableField() const {
  return FieldOf(availableFields_->currentItem());
}

}  // namespace ts4
