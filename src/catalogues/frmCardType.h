#pragma once

#include <array>
#include <memory>

#include "catalogues/CatalogueForm.h"
#include "forms/Surface.h"

namespace orv {

// The catalogue of card types of the current set's language: those of both editions and those that are
// locked to other sets are listed too. What a user adds is of the 2nd edition.
class CardTypeForm : public CatalogueForm {
 public:
  CardTypeForm();
  void Form_Load() override;

  ListView& lvType = lvEntries;
  std::int32_t& SelectedTypeID = SelectedID;
  CommandButton cmdSet;  // locks the selected type to the current set, or makes it global
  Frame Frame1;
  TextBox txtUL, txtUR, txtNr, txtLL, txtLR;
  OptionButton optGlobal;
  OptionButton optUsedInSet;
  CommandButton cmdNew;

  // A small card that shows a type's texts, in twips.
  Surface picCard;
  std::array<std::unique_ptr<Label>, 4> lblType;  // upper left and right, lower left and right
  Label lblNumber{&picCard};
  Label lblTitle{&picCard};
  Surface picFrame{&picCard};
  Surface lblBold{&picCard};  // a rule
  Surface picArtistDest{&picCard};
  SurfaceView viewCard;

 protected:
  ListItem EntryOf(const Recordset& row) const override;
  void ShowEntry(const ListItem& entry) override;

 private:
  void Arrange();
  void DesignSample();
  void Subscribe();
  std::array<TextBox*, 5> Texts() { return {&txtUL, &txtUR, &txtNr, &txtLL, &txtLR}; }
  void ShowTypeSample(const QString& upper_left, const QString& lower_left, const QString& upper_right,
                      const QString& lower_right, const QString& number);
  void ShowTextBoxSample();
  void cmdNew_Click();
  void cmdSet_Click();
};

inline FormInstance<CardTypeForm> frmCardType;

}  // namespace orv
