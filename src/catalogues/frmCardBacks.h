#pragma once

#include "catalogues/CatalogueForm.h"
#include "forms/Surface.h"

namespace orv {

// The catalogue of card backs of the current set's language and of one edition, with a preview. After it
// was loaded InitBacks brings in the rows.
class CardBacksForm : public CatalogueForm {
 public:
  CardBacksForm();

  void InitBacks(std::int16_t edition);

  ListView& lvCardBack = lvEntries;
  std::int32_t& SelectedBackID = SelectedID;
  CommandButton cmdUpdate;  // gives a back a new name
  CommandButton cmdSavePicture;
  Frame Frame1;
  CommandButton cmdLoadPic;
  Surface picNewBack;       // the picture to add, with a thumbnail of it drawn over
  SurfaceView viewNewBack;  // its tag is the file's path
  FormLabel Label1;
  TextBox txtBackText;
  CommandButton cmdNew;
  FormLabel lblDimension;
  Surface picBack;  // the preview, of the size of its picture
  SurfaceView viewBack;

 protected:
  ListItem EntryOf(const Recordset& row) const override;
  void ShowEntry(const ListItem& entry) override;

 private:
  void Arrange();
  void ShowBack(std::int32_t id);
  void FitBackPicture();
  void cmdLoadPic_Click();
  void TakePicture(const DataObject& data);
  void ShowNewPicture(const Picture& picture);
  void txtBackText_GotFocus();
  void cmdNew_Click();
  void cmdUpdate_Click();
  void cmdSavePicture_Click();

  std::int16_t EditionShown = 0;
  QByteArray new_picture_;  // that was dropped or pasted for the next back
};

inline FormInstance<CardBacksForm> frmCardBacks;

}  // namespace orv
