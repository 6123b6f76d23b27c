#include "panel/query_panel_fixture.h"

namespace ts4test {

ts4::TFilterCond* QueryPanelTest::AddCond(ts4::TFilterBracket& bracket, int fieldID, const char* op) {
  ts4::TFilterCond* cond = bracket.AddCond();
  ts4::TDSField* field = structure_->FieldByID(fieldID);
  cond->SetField(field);
  cond->SetOperator(op != nullptr ? structure_->OperatorByName(op) : field->Operators(0));
  return cond;
}

void QueryPanelTest::Load(const char* exampleQuery) {
  panel_->LoadFromFile(QString::fromUtf8(TS4_EXAMPLE_DATA "/") + QString::fromUtf8(exampleQuery));
}

}  // namespace ts4test
