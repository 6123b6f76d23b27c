#include "query/sql_param.h"

#include "foundation/string_utils.h"
#include "query/filter_row.h"

namespace ts4 {

void TSQLParam::SetValue(std::string value) {
  value_ = std::move(value);
  if (condition_ != nullptr) condition_->UpdateSQLParams();
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
