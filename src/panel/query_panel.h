#pragma once

#include <QAbstractScrollArea>
#include <QIcon>
#include <QList>
#include <QString>
#include <QStringList>
#include <functional>
#include <memory>
#include <unordered_map>
#include <vector>

#include "panel/panel_appearance.h"
#include "panel/panel_geometry.h"
#include "query/query.h"

class QAction;
class QLabel;
class QMenu;

namespace ts4 {

class TDropDownLabel;
class TFilterBtn;
class TFlatCheckBox;
class TWPopupMenu;
namespace detail {
class TPanelLines;
struct TRowView;
}  // namespace detail

/// The query panel: the condition tree of a query shown as sentences the
/// end user reads and edits. A header line ("Choose records where all of
/// the following apply"), a line per condition and per nested bracket,
/// indented by depth, and a line that adds a condition. Every word the user
/// may change is a drop-down label; each line starts with a button that
/// shows the row's path and opens the row's menu, and a check box that
/// enables or disables the row.
///
/// The panel owns its TWQuery and is a view of it: it changes the query
/// only through the query's members and follows it only through its
/// observer protocol, so a change made through the TWQuery API shows at
/// once. Widgets exist only for the lines in or near the viewport and are
/// reused while scrolling; RowButton, RowCheckBox and RowControl return
/// null for a row that has none at the moment (EnsureRowVisible scrolls to it).
/// Making a panel turns on the wait cursor of the Qt SQL layer (InstallWaitCursor).
///
/// Keys (with aoAllowKeyboard, while the query is active): Enter opens the
/// current word, Left/Right move between the words of the current line,
/// Up/Down between lines, Insert adds a condition and Alt+Insert a bracket
/// to the current bracket, Ctrl+Delete deletes the current row.
///
/// Plain notifications are signals named as the events they stand for;
/// events that hand something back are std::function members.
class TWQueryPanel : public QAbstractScrollArea, private TQueryObserver {
  Q_OBJECT
  Q_PROPERTY(ts4::TQPAppearance* Appearance READ Appearance CONSTANT)
  Q_PROPERTY(ts4::TQPAppearance* ViewOptions READ Appearance STORED false CONSTANT)
  Q_PROPERTY(QString MainTableName READ MainTableName WRITE SetMainTableName)
  Q_PROPERTY(QStringList Description READ Description WRITE SetDescription)
  Q_PROPERTY(QStringList Titles READ Titles WRITE SetTitles)
  Q_PROPERTY(bool SaveTitles READ SaveTitles WRITE SetSaveTitles)
  Q_PROPERTY(int RowSpace READ RowSpace WRITE SetRowSpace)
  Q_PROPERTY(int TabSpace READ TabSpace WRITE SetTabSpace)
  Q_PROPERTY(int ElemSpace READ ElemSpace WRITE SetElemSpace)
  Q_PROPERTY(int HeaderLeft READ HeaderLeft WRITE SetHeaderLeft)
  Q_PROPERTY(int HeaderTop READ HeaderTop WRITE SetHeaderTop)
  Q_PROPERTY(QString HelpFileName READ HelpFileName WRITE SetHelpFileName)
  Q_PROPERTY(int MaxPopupItemCount READ MaxPopupItemCount WRITE SetMaxPopupItemCount)
  Q_PROPERTY(int RFEHelpContext READ RFEHelpContext WRITE SetRFEHelpContext)
  Q_PROPERTY(QString QueryName READ QueryName WRITE SetQueryName)
  Q_PROPERTY(int SQLOptions READ SQLOptionBits WRITE SetSQLOptionBits)
  Q_PROPERTY(int SQLSyntax READ SQLSyntaxOrdinal WRITE SetSQLSyntaxOrdinal)
  Q_PROPERTY(bool SaveSQLOptions READ SaveSQLOptions WRITE SetSaveSQLOptions)
  Q_PROPERTY(QStringList UserData READ UserData WRITE SetUserData)
  Q_PROPERTY(QList<QIcon> Images READ Images WRITE SetImages)
  Q_PROPERTY(bool Active READ Active WRITE SetActive)

  // First: OnBuildSQL refers into it.
  std::unique_ptr<TWQuery> query_;

 public:
  /// A value the user finished editing, before it is stored; may be changed.
  using TChangeValueEvent = std::function<void(TFilterCond& condition, int index, QString& value)>;
  /// The caption a chosen value is stored with; may be changed.
  using TSetValueEvent = std::function<void(TFilterCond& condition, int index, QString& caption)>;
  /// A custom editor (etCustom) for the field's value: change the value.
  using TCustomEditEvent = std::function<void(TDSField* field, QString& value)>;
  /// The same with the whole condition.
  using TCustomValueEvent = std::function<void(TFilterCond& condition, QString& value)>;
  /// A double click in a value's editor; the text may be changed.
  using TValueDblClickEvent = std::function<void(TFilterCond& condition, int index, QString& value)>;
  /// The image of a field group or a field in the field menus (-1: none).
  using TGetGroupImageIndexEvent = std::function<void(const QString& group, int& imageIndex)>;
  using TGetItemImageIndexEvent =
      std::function<void(const QString& group, const QString& item, int& imageIndex)>;

  /// Tags of the panel's and rows' menu items.
  enum TMenuTag : int { mtAddBracket = 1, mtAddCond = 2, mtDelRow = 3, mtEnableDisable = 4 };
  /// Tags of the value menu's items.
  enum TValueMenuTag : int { vmtConstant = 1, vmtParameter = 2 };

  explicit TWQueryPanel(QWidget* parent = nullptr);
  ~TWQueryPanel() override;

  // ---- The query --------------------------------------------------------------
  [[nodiscard]] TWQuery& Query() { return *query_; }
  [[nodiscard]] const TWQuery& Query() const { return *query_; }
  [[nodiscard]] TWCustomDBStructure* DbStruct() const { return query_->DbStruct(); }
  void SetDbStruct(TWCustomDBStructure* structure) { query_->SetDbStruct(structure); }
  [[nodiscard]] TQueryResult& QResult() { return query_->QResult(); }
  [[nodiscard]] TQPAppearance* Appearance() const { return appearance_; }
  [[nodiscard]] TQPAppearance* ViewOptions() const { return appearance_; }

  [[nodiscard]] QString MainTableName() const;
  void SetMainTableName(const QString& name);
  [[nodiscard]] QStringList Description() const;
  void SetDescription(const QStringList& lines);
  [[nodiscard]] QStringList UserData() const;
  void SetUserData(const QStringList& lines);
  [[nodiscard]] QString QueryName() const;
  void SetQueryName(const QString& name);
  [[nodiscard]] int SQLOptionBits() const;
  void SetSQLOptionBits(int bits);
  [[nodiscard]] int SQLSyntaxOrdinal() const;
  /// Raises EWQueryPanelError code 13 for a number that names no syntax.
  void SetSQLSyntaxOrdinal(int ordinal);
  [[nodiscard]] bool SaveSQLOptions() const { return query_->SaveSQLOptions(); }
  void SetSaveSQLOptions(bool on) { query_->SetSaveSQLOptions(on); }
  [[nodiscard]] bool SaveTitles() const { return query_->SaveTitles(); }
  void SetSaveTitles(bool on) { query_->SetSaveTitles(on); }
  [[nodiscard]] bool Active() const { return query_->Active(); }
  void SetActive(bool active) { query_->SetActive(active); }
  void Activate() { SetActive(true); }
  void Deactivate() { SetActive(false); }

  // ---- Layout settings ----------------------------------------------------------
  [[nodiscard]] int RowSpace() const { return spacing_.RowSpace; }
  void SetRowSpace(int pixels);
  [[nodiscard]] int TabSpace() const { return spacing_.TabSpace; }
  void SetTabSpace(int pixels);
  [[nodiscard]] int ElemSpace() const { return spacing_.ElemSpace; }
  void SetElemSpace(int pixels);
  [[nodiscard]] int HeaderLeft() const { return spacing_.HeaderLeft; }
  void SetHeaderLeft(int pixels);
  [[nodiscard]] int HeaderTop() const { return spacing_.HeaderTop; }
  void SetHeaderTop(int pixels);
  [[nodiscard]] const QString& HelpFileName() const { return helpFileName_; }
  void SetHelpFileName(const QString& name) { helpFileName_ = name; }
  /// Items per column of the field and value pop-ups; 0 fits the screen.
  [[nodiscard]] int MaxPopupItemCount() const { return maxPopupItemCount_; }
  void SetMaxPopupItemCount(int count);
  [[nodiscard]] int RFEHelpContext() const { return rfeHelpContext_; }
  void SetRFEHelpContext(int context) { rfeHelpContext_ = context; }
  /// Images the field menus show (by the indexes the image events give).
  [[nodiscard]] const QList<QIcon>& Images() const { return images_; }
  void SetImages(const QList<QIcon>& images);

  // ---- Captions -----------------------------------------------------------------
  [[nodiscard]] QStringList Titles() const;
  /// Lays the lines over the built-in captions. A header sentence or bracket
  /// sentence without "@" raises EWQueryPanelError code 4 or 5 and leaves
  /// the captions as they were.
  void SetTitles(const QStringList& lines);
  [[nodiscard]] QString GetTitle(const QString& name) const;
  /// Sets a caption the table has (an unknown name is ignored), with the
  /// same check of the two sentences as SetTitles.
  void SetTitle(const QString& name, const QString& value);
  void LoadDefTitles();
  /// Captions the menus from the captions table again.
  void UpdateMenuCaptions();
  /// Reads the header sentence again and shows the header; raises code 4
  /// when it has no "@".
  void ShowHeader();

  // ---- Operations of the query ------------------------------------------------------
  void BuildQuery() { query_->BuildQuery(); }
  [[nodiscard]] QString GetQueryText();
  void SaveToFile(const QString& fileName);
  void LoadFromFile(const QString& fileName);
  void SaveToStrings(TStrings& list) { query_->SaveToStrings(list); }
  void LoadFromStrings(const TStrings& list) { query_->LoadFromStrings(list); }
  void ParseSQL(const QString& sql);
  void ClearQuery() { query_->ClearQuery(); }
  /// Holds back the panel's layout (and the query's notifications, which
  /// come as one reset) until the outermost EndUpdate.
  void BeginUpdate();
  void EndUpdate();
  [[nodiscard]] bool Updating() const { return updateCount_ > 0; }

  // ---- Rows and the current row ------------------------------------------------------
  [[nodiscard]] TFilterRow* GetCurrentRow() const { return currentRow_; }
  void SetCurrentRow(TFilterRow* row);
  /// The current row's line, -1 without one.
  [[nodiscard]] int GetCurrentRowNum() const;
  void SetCurrentRowNum(int line);
  /// The row on the line, or null.
  [[nodiscard]] TFilterRow* GetRowByNum(int line) const;
  /// How many lines the panel shows (the header's included).
  [[nodiscard]] int LineCount() const;
  /// The current row when it is a bracket, else its bracket; null without one.
  [[nodiscard]] TFilterBracket* GetCurrentBracket() const;
  void IncRow();
  void DecRow();
  /// Adds a condition at the end of the bracket and makes it current.
  TFilterCond* InsertCondition(TFilterBracket& bracket);
  /// Adds a bracket at the end of the bracket; with psAndOr or
  /// aoNonEmptyBrackets with a first condition, which becomes current.
  TFilterBracket* InsertBracket(TFilterBracket& bracket);
  /// Deletes a row other than the root (the query renumbers the others).
  void DeleteRow(TFilterRow& row);
  /// The index of the current control of the row (0 when it has none).
  [[nodiscard]] int CurrentControlIndex(const TFilterRow& row) const;
  void NextCurControl();
  void PrevCurControl();
  void FirstCurControl();
  /// The current row's current control, or null.
  [[nodiscard]] QWidget* GetCurrentControl() const;
  /// The index of the control in its row, 0 when it is none of a row's.
  [[nodiscard]] int GetControlIndex(const QWidget* control) const;
  /// Whether the current control is framed (arrow keys switch it on).
  [[nodiscard]] bool ControlFrame() const { return controlFrame_; }
  void SetControlFrame(bool on);
  /// Enables or disables the current row.
  void SetEnabled(bool enabled);
  /// Closes every open editor of the rows, keeping what it holds.
  void CloseEdit();
  /// Scrolls so that the row's line is in view.
  void EnsureRowVisible(const TFilterRow& row);

  // ---- Controls ---------------------------------------------------------------------
  [[nodiscard]] TFilterBtn* RowButton(const TFilterRow& row) const;
  [[nodiscard]] TFlatCheckBox* RowCheckBox(const TFilterRow& row) const;
  /// The control at the index (TRowControlIndex) of the row, or null.
  [[nodiscard]] QLabel* RowControl(const TFilterRow& row, int index) const;
  [[nodiscard]] TDropDownLabel* AddRowLabel() const { return addRowLabel_; }
  [[nodiscard]] TWPopupMenu* PanelMenu() const { return panelMenu_; }
  [[nodiscard]] TWPopupMenu* RowMenu() const { return rowMenu_; }
  [[nodiscard]] TWPopupMenu* ValueMenu() const { return valueMenu_; }
  /// The rectangle the row's line takes in the viewport (button to last word).
  [[nodiscard]] QRect RowRect(const TFilterRow& row) const;

  // ---- Gestures -----------------------------------------------------------------------
  /// The header button: the panel menu, when the structure has a field with operators.
  void MainButtonClick();
  /// A row button: makes its row current and opens the row menu under it.
  void RowButtonClick(TFilterBtn& button);
  void MenuItemClick(int tag);
  /// Makes the current value a constant or a parameter.
  void ValueMenuItemClick(int tag);
  /// Checks the value menu's item for what the current value is.
  void VPopup();
  /// The drop-down of a custom value: OnCustomEdit, then OnCustomValue.
  void CustomDropDownHandler(TFilterCond& condition, QString& value, bool& accepted);
  /// Edits the SQL text of the condition's sub-query in a dialog; true when accepted.
  bool RunSubQueryEditor(TFilterCond& condition);

  /// Text sizes in the panel's font.
  [[nodiscard]] int tsTextWidth(const QString& text) const;
  [[nodiscard]] int tsTextHeight(const QString& text) const;

  [[nodiscard]] QSize sizeHint() const override;

  // ---- Events --------------------------------------------------------------------------
  TChangeValueEvent OnChangeValue;
  TSetValueEvent OnSetValue;
  TCustomEditEvent OnCustomEdit;
  TCustomValueEvent OnCustomValue;
  TValueDblClickEvent OnValueDblClick;
  TGetGroupImageIndexEvent OnGetGroupImageIndex;
  TGetItemImageIndexEvent OnGetItemImageIndex;
  /// The query's OnBuildSQL.
  TBuildSQLEvent& OnBuildSQL;

 signals:
  void OnActive();
  void OnChange();
  void OnParamListChange();
  void OnConditionChange(const ts4::TFilterCond* condition);
  void OnRFEHelpClick();
  /// A gesture the query refused (a bracket nested too deep, an
  /// application's handler that failed): the query is as it was.
  void OnError(const QString& message);

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void scrollContentsBy(int dx, int dy) override;
  bool viewportEvent(QEvent* event) override;
  void changeEvent(QEvent* event) override;
  /// Tab moves through the words of the lines in order, then out of the panel.
  bool focusNextPrevChild(bool next) override;

 private:
  // The query's notifications.
  void QueryAboutToBeReset() override;
  void QueryReset() override;
  void RowsInserted(const TFilterBracket& parent, int first, int last) override;
  void RowsAboutToBeRemoved(const TFilterBracket& parent, int first, int last) override;
  void RowsRemoved(const TFilterBracket& parent, int first, int last) override;
  void RowsMoved(const TFilterBracket& from, int first, int last, const TFilterBracket& to,
                 int toIndex) override;
  void RowsRenumbered(const TFilterBracket& parent, int first) override;
  void RowChanged(const TFilterRow& row, TRowAspects aspects) override;
  void QueryChanged(TQueryAspects aspects) override;
  void CloseEditors() override;

  // Layout (query_panel_layout.cpp).
  /// Numbers the lines again and lays out what is in view.
  void Relayout();
  /// Makes views for the lines in or near the viewport and lets the others
  /// go; places them all, or only the new ones (the others moved with a scroll).
  void UpdateViews(bool placeAll = true);
  void PlaceView(detail::TRowView& view);
  void PlaceAddRow();
  void UpdateScrollBars();
  [[nodiscard]] int ButtonHeight() const;
  [[nodiscard]] int LinePitch() const;
  [[nodiscard]] detail::TRowView* ViewOf(const TFilterRow* row) const;
  void ReleaseView(const TFilterRow* row);
  void ReleaseAllViews();
  /// Lets every view go for good and lays out with new ones (their kinds changed).
  void RemakeAllViews();
  void RebindAll();
  void PaintRows(QPaintEvent* event);

  /// Splits the header's and the brackets' sentences again (each keeps its
  /// last good split when the captions break it).
  void ReadSentences();

  // Views of rows (query_panel_rows.cpp).
  [[nodiscard]] std::unique_ptr<detail::TRowView> TakeView(bool bracket);
  void BindView(detail::TRowView& view, TFilterRow& row);
  /// The row's button: its path, look and accessible name.
  void BindButton(detail::TRowView& view, TFilterRow& row);
  void TintButton(detail::TRowView& view);
  void BindBracket(detail::TRowView& view, TFilterBracket& bracket);
  void BindCondition(detail::TRowView& view, TFilterCond& condition);
  void BindValueLabel(detail::TRowView& view, TFilterCond& condition, int index);
  [[nodiscard]] TDropDownLabel* MakeValueLabel(detail::TRowView& view, int index);
  void FillFieldList(TDropDownLabel& label) const;
  void FillOperatorList(TDropDownLabel& label, const TFilterCond& condition) const;
  void StyleLabel(QLabel& label, const QColor& color) const;
  [[nodiscard]] QString RowSentence(const detail::TRowView& view) const;

  // Gestures on the words (query_panel_values.cpp).
  void FieldChosen(detail::TRowView& view);
  void OperatorChosen(detail::TRowView& view);
  void LinkTypeChosen(detail::TRowView& view, bool andOrWord);
  void ValueChosen(detail::TRowView& view, int index, bool accepted);
  void ValueRightClick(detail::TRowView& view, int index);
  void ValueAltClick(detail::TRowView& view, int index);
  void CheckBoxToggled(detail::TRowView& view, bool checked);
  void SetCurrentControlIndex(const TFilterRow& row, int index);
  void MakeCurrent(detail::TRowView& view, QWidget* control);

  /// Runs a gesture; a library error it raises is told through OnError
  /// instead of escaping into Qt's event loop.
  template <typename Gesture>
  void Guarded(Gesture&& gesture);

  // Menus and keys (query_panel_keys.cpp).
  void CreateMenus();
  void RepaintRow(const TFilterRow* row);

  TQPAppearance* appearance_;
  std::unique_ptr<detail::TPanelLines> lines_;
  std::unordered_map<const TFilterRow*, std::unique_ptr<detail::TRowView>> views_;
  std::vector<std::unique_ptr<detail::TRowView>> freeViews_;
  std::unordered_map<const TFilterRow*, int> controlIndexes_;
  TDropDownLabel* addRowLabel_ = nullptr;
  TWPopupMenu* panelMenu_ = nullptr;
  TWPopupMenu* rowMenu_ = nullptr;
  TWPopupMenu* valueMenu_ = nullptr;
  TFilterRow* currentRow_ = nullptr;
  TFilterRow* lastClickedRow_ = nullptr;
  int removedCurrentLine_ = -1;  // where the current row stood while it is being removed
  QString headerLeft_;
  QString headerRight_;
  QString bracketLeft_;
  QString bracketRight_;
  TPanelSpacing spacing_;
  QString helpFileName_;
  QList<QIcon> images_;
  int maxPopupItemCount_ = 0;
  int rfeHelpContext_ = 0;
  int updateCount_ = 0;
  int widestLine_ = 0;
  bool controlFrame_ = true;
  bool resetting_ = false;
  bool layingOut_ = false;
};

}  // namespace ts4
