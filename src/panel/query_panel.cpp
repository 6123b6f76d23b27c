#include "panel/query_panel.h"

#include <QFontMetrics>
#include <QScrollBar>
#include <string>

#include "foundation/assign.h"
#include "foundation/error.h"
#include "foundation/messages.h"
#include "panel/dropdown_label.h"
#include "panel/panel_lines_p.h"
#include "panel/popup_menu.h"
#include "panel/qt_strings_p.h"
#include "panel/row_view_p.h"
#include "panel/wait_cursor.h"
#include "query/captions.h"

namespace ts4 {

using detail::FromQ;
using detail::ToQ;

namespace {

// The header's or a bracket's sentence split at its "@": the text before
// the link word and the text after it. A bracket sentence that is empty is
// taken from the table's second line as it stands.
std::pair<QString, QString> SplitSentence(const TStrings& titles, bool header) {
  std::string sentence = titles.Values(header ? "ttlFilter" : "ttlBracket");
  if (!header && sentence.empty() && titles.Count() > 1) sentence = titles[1];
  const std::size_t at = sentence.find('@');
  if (at == std::string::npos) {
    if (header) throw EWQueryPanelError(qecInvalidFilterTitle, std::string(msg::InvalidFilterTitle));
    throw EWQueryPanelError(qecInvalidStringFormat, std::string(msg::InvalidStringFormat));
  }
  return {ToQ(std::string_view(sentence).substr(0, at)), ToQ(std::string_view(sentence).substr(at + 1))};
}

// Raises code 4 or 5 when a table's sentences cannot be split.
void CheckSentences(const TStrings& titles) {
  (void)SplitSentence(titles, true);
  (void)SplitSentence(titles, false);
}

}  // namespace

TWQueryPanel::TWQueryPanel(QWidget* parent)
    : QAbstractScrollArea(parent),
      query_(std::make_unique<TWQuery>()),
      OnBuildSQL(query_->OnBuildSQL),
      appearance_(new TQPAppearance(this)),
      lines_(std::make_unique<detail::TPanelLines>()) {
  appearance_->setParent(this);
  // A panel is where the database work of a GUI application starts (the
  // queries of value lists), so making one turns on the wait cursor, as
  // users of a Qt GUI expect without a call of their own.
  InstallWaitCursor();
  query_->AddObserver(this);
  // The query's plain notifications become the panel's signals here, and only here.
  query_->OnChange = [this](TWQuery&) { emit OnChange(); };
  query_->OnParamListChange = [this](TWQuery&) { emit OnParamListChange(); };
  query_->OnActive = [this](TWQuery&) { emit OnActive(); };
  connect(appearance_, &TQPAppearance::Changed, this, [this] {
    query_->SetNonEmptyBrackets(appearance_->Has(aoNonEmptyBrackets));
    RemakeAllViews();  // options decide the kinds of the words
  });

  setFocusPolicy(Qt::StrongFocus);
  viewport()->setBackgroundRole(QPalette::Window);
  viewport()->setAutoFillBackground(true);

  addRowLabel_ = new TDropDownLabel(viewport());
  addRowLabel_->hide();
  addRowLabel_->setFocusPolicy(Qt::ClickFocus);  // Tab reaches it through the panel
  addRowLabel_->OnCustomDropDown = [this](TDropDownLabel&, QString&, bool& accept) {
    accept = false;
    InsertCondition(query_->Root());
  };
  CreateMenus();
  ReadSentences();
  Relayout();
}

TWQueryPanel::~TWQueryPanel() {
  query_->RemoveObserver(this);
  query_->OnChange = nullptr;
  query_->OnParamListChange = nullptr;
  query_->OnActive = nullptr;
}

// ---- Properties ------------------------------------------------------------------

QString TWQueryPanel::MainTableName() const {
  return ToQ(query_->MainTableName());
}
void TWQueryPanel::SetMainTableName(const QString& name) {
  query_->SetMainTableName(FromQ(name));
}
QStringList TWQueryPanel::Description() const {
  return ToQ(query_->Description());
}
void TWQueryPanel::SetDescription(const QStringList& lines) {
  query_->SetDescription(FromQ(lines));
}
QStringList TWQueryPanel::UserData() const {
  return ToQ(query_->UserData());
}
void TWQueryPanel::SetUserData(const QStringList& lines) {
  query_->SetUserData(FromQ(lines));
}
QString TWQueryPanel::QueryName() const {
  return ToQ(query_->QueryName());
}
void TWQueryPanel::SetQueryName(const QString& name) {
  query_->SetQueryName(FromQ(name));
}
int TWQueryPanel::SQLOptionBits() const {
  return static_cast<int>(query_->SQLOptions().Bits());
}

void TWQueryPanel::SetSQLOptionBits(int bits) {
  constexpr int known = (1 << (static_cast<int>(soSortByNames) + 1)) - 1;
  query_->SetSQLOptions(TSQLOptions::FromBits(static_cast<std::uint64_t>(bits & known)));
}

int TWQueryPanel::SQLSyntaxOrdinal() const {
  return static_cast<int>(query_->SQLSyntax());
}

void TWQueryPanel::SetSQLSyntaxOrdinal(int ordinal) {
  if (ordinal < static_cast<int>(ssSQL1) || ordinal > static_cast<int>(ssOracle))
    throw EWQueryPanelError(qecInvalidPropertyValue, std::string(msg::InvalidPropertyValue));
  query_->SetSQLSyntax(static_cast<TSQLSyntax>(ordinal));
}

// Spacing is in pixels and never negative.
void TWQueryPanel::SetRowSpace(int pixels) {
  if (AssignIfChanged(spacing_.RowSpace, std::max(pixels, 0))) Relayout();
}
void TWQueryPanel::SetTabSpace(int pixels) {
  if (AssignIfChanged(spacing_.TabSpace, std::max(pixels, 0))) Relayout();
}
void TWQueryPanel::SetElemSpace(int pixels) {
  if (AssignIfChanged(spacing_.ElemSpace, std::max(pixels, 0))) Relayout();
}
void TWQueryPanel::SetHeaderLeft(int pixels) {
  if (AssignIfChanged(spacing_.HeaderLeft, std::max(pixels, 0))) Relayout();
}
void TWQueryPanel::SetHeaderTop(int pixels) {
  if (AssignIfChanged(spacing_.HeaderTop, std::max(pixels, 0))) Relayout();
}

void TWQueryPanel::SetMaxPopupItemCount(int count) {
  maxPopupItemCount_ = std::max(count, 0);
  RebindAll();
}

void TWQueryPanel::SetImages(const QList<QIcon>& images) {
  images_ = images;
  RebindAll();
}

// ---- Captions --------------------------------------------------------------------

QStringList TWQueryPanel::Titles() const {
  return ToQ(query_->Titles());
}

void TWQueryPanel::SetTitles(const QStringList& lines) {
  TStrings source = FromQ(lines);
  TStrings merged;
  TStrings probe = source;
  LoadTitlesFromStrings(query_->DefTitles(), merged, probe);
  CheckSentences(merged);
  query_->SetTitles(source);
}

QString TWQueryPanel::GetTitle(const QString& name) const {
  return ToQ(query_->GetTitle(FromQ(name)));
}

void TWQueryPanel::SetTitle(const QString& name, const QString& value) {
  TStrings probe = query_->Titles();
  if (probe.IndexOfName(FromQ(name)) < 0) return;
  probe.SetValue(FromQ(name), FromQ(value));
  CheckSentences(probe);
  query_->SetTitle(FromQ(name), FromQ(value));
}

void TWQueryPanel::LoadDefTitles() {
  query_->LoadDefTitles();
}

void TWQueryPanel::ReadSentences() {
  // Captions set through the query may break a sentence: the lines then
  // keep the words they had, and ShowHeader or SetTitles report it.
  try {
    std::tie(headerLeft_, headerRight_) = SplitSentence(query_->Titles(), true);
  } catch (const EWQueryPanelError&) {
  }
  try {
    std::tie(bracketLeft_, bracketRight_) = SplitSentence(query_->Titles(), false);
  } catch (const EWQueryPanelError&) {
  }
}

void TWQueryPanel::ShowHeader() {
  std::tie(headerLeft_, headerRight_) = SplitSentence(query_->Titles(), true);
  if (detail::TRowView* view = ViewOf(&query_->Root())) BindView(*view, query_->Root());
  Relayout();
}

// ---- Operations of the query --------------------------------------------------------

QString TWQueryPanel::GetQueryText() {
  return ToQ(query_->GetQueryText());
}
void TWQueryPanel::SaveToFile(const QString& fileName) {
  query_->SaveToFile(FromQ(fileName));
}
void TWQueryPanel::LoadFromFile(const QString& fileName) {
  query_->LoadFromFile(FromQ(fileName));
}
void TWQueryPanel::ParseSQL(const QString& sql) {
  query_->ParseSQL(FromQ(sql));
}

void TWQueryPanel::BeginUpdate() {
  ++updateCount_;
  query_->BeginUpdate();
}

void TWQueryPanel::EndUpdate() {
  if (updateCount_ == 0) return;
  --updateCount_;
  query_->EndUpdate();
  if (updateCount_ == 0) Relayout();
}

// ---- The query's notifications ------------------------------------------------------

void TWQueryPanel::QueryAboutToBeReset() {
  resetting_ = true;
  ReleaseAllViews();
  controlIndexes_.clear();
  currentRow_ = nullptr;
  lastClickedRow_ = nullptr;
  lines_->Clear();
}

void TWQueryPanel::QueryReset() {
  resetting_ = false;
  Relayout();
}

void TWQueryPanel::RowsInserted(const TFilterBracket&, int, int) {
  Relayout();
}

namespace {

// Whether the row is one of the bracket's rows first..last or lies inside
// one: its ancestor in the bracket is looked for among those rows only, as
// a bracket may hold thousands.
bool IsWithin(const TFilterRow* row, const TFilterBracket& parent, int first, int last) {
  while (row != nullptr && row->Parent() != &parent) row = row->Parent();
  if (row == nullptr) return false;
  for (int index = first; index <= last; ++index)
    if (parent.GetRow(index) == row) return true;
  return false;
}

}  // namespace

void TWQueryPanel::RowsAboutToBeRemoved(const TFilterBracket& parent, int first, int last) {
  // Everything that points into the rows that go lets go of them now.
  std::vector<const TFilterRow*> going;
  for (const auto& [row, view] : views_)
    if (IsWithin(row, parent, first, last)) going.push_back(row);
  for (const TFilterRow* row : going) ReleaseView(row);
  std::erase_if(controlIndexes_,
                [&](const auto& entry) { return IsWithin(entry.first, parent, first, last); });
  if (IsWithin(lastClickedRow_, parent, first, last)) lastClickedRow_ = nullptr;
  if (!IsWithin(currentRow_, parent, first, last)) return;
  // The current row moves: up from the last line, else down onto the line
  // that takes its place; without other rows there is none.
  const int line = currentRow_->RowNum();
  const TFilterRow* lastRow = lines_->RowAt(lines_->Count() - 1);
  removedCurrentLine_ = -1;
  if (line > 0 && query_->Root().GetRowCount() > 1)
    removedCurrentLine_ = lastRow != nullptr && line >= lastRow->RowNum() ? line - 1 : line;
  currentRow_ = nullptr;
}

void TWQueryPanel::RowsRemoved(const TFilterBracket&, int, int) {
  Relayout();
  if (removedCurrentLine_ >= 0) {
    SetCurrentRow(lines_->RowAt(std::min(removedCurrentLine_, lines_->Count() - 1)));
    removedCurrentLine_ = -1;
  }
}

void TWQueryPanel::RowsMoved(const TFilterBracket&, int, int, const TFilterBracket&, int) {
  RebindAll();
  Relayout();
}

void TWQueryPanel::RowsRenumbered(const TFilterBracket&, int) {
  // The lines are as they were; the paths on the buttons are new.
  for (const auto& [row, view] : views_) {
    BindButton(*view, *view->Row);
    PlaceView(*view);
  }
  PlaceAddRow();
}

void TWQueryPanel::RowChanged(const TFilterRow& row, TRowAspects aspects) {
  if (aspects.Contains(raHidden)) {
    Relayout();
    return;
  }
  // A bracket's link word shows in the and/or words of its rows too.
  if (aspects.Contains(raLinkType) && appearance_->Style() == psAndOr) {
    RebindAll();
  } else if (detail::TRowView* view = ViewOf(&row)) {
    BindView(*view, *view->Row);
    PlaceView(*view);
  }
  if (!row.IsBracket() &&
      (aspects & TRowAspects{raField, raOperator, raValues, raParams, raEnabled}) != TRowAspects{})
    emit OnConditionChange(static_cast<const TFilterCond*>(&row));
  UpdateScrollBars();
  viewport()->update();
}

void TWQueryPanel::QueryChanged(TQueryAspects aspects) {
  if (aspects.Contains(qaCaptions)) {
    ReadSentences();
    UpdateMenuCaptions();
  }
  if (aspects.Contains(qaSettings) && query_->NonEmptyBrackets() != appearance_->Has(aoNonEmptyBrackets)) {
    TQPAppearanceOptions options = appearance_->Options();
    query_->NonEmptyBrackets() ? options.Include(aoNonEmptyBrackets) : options.Exclude(aoNonEmptyBrackets);
    appearance_->SetOptions(options);
  }
  if ((aspects & TQueryAspects{qaCaptions, qaStructure, qaParameters}) != TQueryAspects{}) {
    RebindAll();
    Relayout();
  }
}

void TWQueryPanel::CloseEditors() {
  CloseEdit();
}

void TWQueryPanel::CloseEdit() {
  // Copied first: accepting an edit changes the row, which may rebind views.
  std::vector<QPointer<TDropDownLabel>> open;
  for (const auto& [row, view] : views_)
    for (QLabel* label : view->Controls)
      if (auto* word = qobject_cast<TDropDownLabel*>(label); word != nullptr && word->Dropped())
        open.emplace_back(word);
  for (const QPointer<TDropDownLabel>& word : open)
    if (word != nullptr) word->DropUp(true);
}

// ---- Text sizes ----------------------------------------------------------------------

int TWQueryPanel::tsTextWidth(const QString& text) const {
  return fontMetrics().horizontalAdvance(text);
}
int TWQueryPanel::tsTextHeight(const QString& text) const {
  return fontMetrics().boundingRect(text.isEmpty() ? QStringLiteral("I") : text).height();
}

QSize TWQueryPanel::sizeHint() const {
  return {400, 300};
}

}  // namespace ts4
