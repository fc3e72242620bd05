#pragma once

#include <cstdint>
#include <string>

#include "vetlo/dialogs/dialog.h"
#include "vetlo/platform/platform.h"
#include "vetlo/services/common_services.h"

namespace vetlo {

// The dialog that saves the settings of a row as a favourite, under a new name or in the place of
// the favourite of that name.
class frmAddToFavorites : public Form {
 public:
  // The platform must outlive the form.
  explicit frmAddToFavorites(Platform& platform);

  // Handed over before the form is shown; they stay the caller's. A source row that is gone ends
  // the dialog before it shows.
  std::int32_t lngChartReportSubTypeNumber = 0;
  Recordset* recChartReportSubType = nullptr;
  std::string strDefaultName;
  Database* dbDov = nullptr;
  Variant varParameter1;
  Variant varParameter2;

  // False once a favourite was saved.
  [[nodiscard]] bool blnCancelled() const { return cancelled_; }

  Label lblDescription{
      *this, nullptr, "lblDescription",
      "Type a name for the report or chart. Quillmarsh will remember your customization."};
  Label lblName{*this, nullptr, "lblName", "&Name:"};
  // The item data of an entry is the number of the favourite's row.
  ComboBox cboName{*this, nullptr, "cboName"};
  Button cmdOK{*this, nullptr, "cmdOK", "OK"};
  Button cmdCancel{*this, nullptr, "cmdCancel", "Cancel"};

 protected:
  void Activate() override;

 private:
  void ListFavorites();
  // OK can be pressed while there is a name.
  void OfferOK();
  void Accept();
  bool NameIsThere();
  bool NameIsShortEnough();
  bool MayReplace();
  [[nodiscard]] SettingsChange Favorite() const;
  void Save(SaveMode lngMode, std::int32_t number);
  void TellFailure(SaveMode lngMode, std::int32_t failure);

  Platform& platform_;
  bool cancelled_ = true;
};

}  // namespace vetlo
