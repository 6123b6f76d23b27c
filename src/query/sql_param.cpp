#include "query/sql_param.h"

#include "foundation/assign.h"
#include "foundation/string_utils.h"
#include "query/filter_row.h"
#include "query/query.h"
#include "query/query_notifier_p.h"

namespace ts4 {

void TSQLParam::Changed() const {
  if (condition_ == nullptr) return;
  TWQuery& query = condition_->Query();
  query.Notifier().QueryChanged({qaParameters});
  query.Changed();
}

void TSQLParam::SetName(std::string name) {
  if (AssignIfChanged(name_, std::move(name))) Changed();
}

void TSQLParam::SetCaption(std::string caption) {
  if (AssignIfChanged(caption_, std::move(caption))) Changed();
}

void TSQLParam::SetDataType(TFieldType type) {
  if (AssignIfChanged(dataType_, type)) Changed();
}

void TSQLParam::SetValue(std::string value) {
  const bool changed = value != value_;
  value_ = std::move(value);
  if (condition_ == nullptr) return;
  const detail::TQueryOperation operation(condition_->Query().Notifier());
  condition_->UpdateSQLParams();
  if (changed) Changed();
}

std::string TSQLParam::GetFullValue() const {
  return ReplaceStr(vFormat_, "@v", value_);
}

int TSQLParamList::IndexByName(std::string_view name) const {
  for (int i = 0; i < Count(); ++i) {
    if (SameText(Items(i)->Name(), name)) return i;
  }
  return -1;
}

int TSQLParamList::IndexByCondition(const TFilterCond* condition) const {
  for (int i = 0; i < Count(); ++i) {
    if (Items(i)->Condition() == condition) return i;
  }
  return -1;
}

int TSQLParamList::DeleteByCondition(const TFilterCond* condition) {
  int deleted = 0;
  for (int i = Count() - 1; i >= 0; --i) {
    if (Items(i)->Condition() == condition) {
      Delete(i);
      ++deleted;
    }
  }
  return deleted;
}

}  // namespace ts4
