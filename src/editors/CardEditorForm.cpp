// The card editor's controls: their making, their arrangement and their events.
#include "editors/CardEditor.h"
#include "editors/inner/EditorLayout.h"
#include "forms/ControlHelpers.h"
#include "state/modData.h"

namespace orv {

CardEditor::CardEditor(const CardEditorKind& kind)
    : RecordEditor({kind.form_name, "tblCard", "CardID", "card", modData::rsCard, kind.output}),
      pic2ndCard(*this),
      viewCard(pic2ndCard, CardPreviewOf(kind.edition).picCard),
      viewBack(pic2ndCard, CardPreviewOf(kind.edition).picBack),
      picCardRest(*this),
      fraTitle(picCardRest, QStringLiteral("Title and type")),
      lblTitleName(fraTitle, QStringLiteral("&Title:")),
      txtTitle(fraTitle),
      lblTypeName(fraTitle, QStringLiteral("T&ype:")),
      cboType(fraTitle),
      cmdGetType(fraTitle, QStringLiteral("...")),
      lblNumberName(fraTitle, QStringLiteral("&Number:")),
      cboNumber(fraTitle, ComboBox::DropDownCombo),
      chkOneLine(fraTitle, QStringLiteral("One &line on top")),
      lblCopyName(fraTitle, QStringLiteral("&Multiple:")),
      txtCopy(fraTitle),
      udCopy(fraTitle, txtCopy, 1, 99),
      fraPicture(picCardRest, QStringLiteral("Picture")),
      chkShowPicture(fraPicture, QStringLiteral("&Use picture")),
      chkFrame(fraPicture, QStringLiteral("Use &frames")),
      chkResize(fraPicture, QStringLiteral("&Resize")),
      lblPictureName(fraPicture, QStringLiteral("Picture:")),
      cmdGetPic(fraPicture, QStringLiteral("Select")),
      cmdDelPic(fraPicture, QStringLiteral("Remove")),
      lblPicDim(fraPicture, QStringLiteral("138W * 105H")),
      lblPicScale(fraPicture),
      lblArtistName(fraPicture, QStringLiteral("Art&ist:")),
      txtArtist(fraPicture),
      fraTexts(picCardRest, QStringLiteral("Texts")),
      lblBoldName(fraTexts, QStringLiteral("B&old text:")),
      txtBold(fraTexts),
      lblInfoName(fraTexts, QStringLiteral("&Information:")),
      txtInfo(fraTexts, TextBox::MultiLine),
      fraBack(picCardRest, QStringLiteral("Background and back")),
      lblBackgroundName(fraBack, QStringLiteral("&Background:")),
      cmdBackPic(fraBack, QStringLiteral("Select")),
      cmdLastBackPic(fraBack, QStringLiteral("Last used")),
      cmdDelBackPic(fraBack, QStringLiteral("Remove")),
      lblColourName(fraBack, QStringLiteral("&Colour:")),
      viewColour(fraBack, picColour),
      cmdColour(fraBack, QStringLiteral("...")),
      lblCardBackName(fraBack, QStringLiteral("C&ard back:")),
      cboCardBack(fraBack),
      cmdGetCardBack(fraBack, QStringLiteral("...")),
      cmdSort(pnlBar, QStringLiteral("Card list")),
      cmdStat(pnlBar, QStringLiteral("Statistics")),
      kind_(kind),
      preview_(CardPreviewOf(kind.edition)),
      mover_(Record(), "PicLeft", "PicTop", preview_.picFrame, preview_.picImage,
             [this] { preview_.PlacePicture(); }),
      fitter_({Record(), "tblCard", "Picture", "PicLeft", "PicTop", preview_.picFrame, preview_.picImage,
               lblPicScale, [this] { return PictureRoom(); }, [this] { preview_.PlacePicture(); },
               [this] { cmdDelPic_Click(); }}),
      handle_(Record(), preview_.lblPicSize, HandleDrag::Down, preview_.Layout().handle_lowest,
              preview_.Layout().handle_highest, [this] {
                FrameResized();
                Record().Update();
              }) {
  SetCaption(QString::fromLatin1(kind.caption));
  Arrange();
  Subscribe();
}

void CardEditor::Arrange() {
  ArrangeBar({&cmdSort, &cmdStat});
  BoxLayout preview(pic2ndCard, BoxLayout::Row, 0, 0);
  preview.Add(viewCard);
  preview.Add(viewBack);
  preview.AddStretch();
  ArrangeTitle();
  ArrangePicture();
  ArrangeTexts();
  ArrangeBack();
  BoxLayout rest(picCardRest, BoxLayout::Column, 0);
  rest.Add(fraTitle);
  rest.Add(fraPicture);
  rest.Add(fraTexts, 1);
  rest.Add(fraBack);
  ArrangeSides(pic2ndCard, picCardRest);
}

void CardEditor::ArrangeTitle() {
  GridLayout grid(fraTitle);
  lblTitleName.SetBuddy(txtTitle);
  lblTypeName.SetBuddy(cboType);
  lblNumberName.SetBuddy(cboNumber);
  lblCopyName.SetBuddy(txtCopy);
  Explain(cmdGetType, QStringLiteral("Choose from the card types"));
  txtCopy.SetToolTip(QStringLiteral("How many of this card you want, for your own use"));
  grid.Add(lblTitleName, 0, 0);
  grid.Add(txtTitle, 0, 1, 1, 4);
  grid.Add(lblTypeName, 1, 0);
  BoxLayout type = grid.AddBox(BoxLayout::Row, 1, 1, 1, 4);
  type.Add(cboType, 1);
  type.Add(cmdGetType);
  grid.Add(lblNumberName, 2, 0);
  grid.Add(cboNumber, 2, 1);
  grid.Add(chkOneLine, 2, 2);
  grid.Add(lblCopyName, 2, 3);
  BoxLayout copies = grid.AddBox(BoxLayout::Row, 2, 4);
  copies.Add(txtCopy);
  copies.Add(udCopy);
  grid.SetColumnStretch(2, 1);
  SetFixedWidth(txtCopy, 40);
  SetFixedWidth(cmdGetType, 32);
}

void CardEditor::ArrangePicture() {
  GridLayout grid(fraPicture);
  cmdGetPic.SetAccessibleName(QStringLiteral("Select the picture"));
  cmdDelPic.SetAccessibleName(QStringLiteral("Remove the picture"));
  chkResize.SetToolTip(QStringLiteral("The frame closes around the picture"));
  lblPicDim.SetToolTip(QStringLiteral("Size of the picture's frame in pixels"));
  AddChecks(grid, {&chkShowPicture, &chkFrame, &chkResize});
  ExplainScale(lblPicScale);
  AddRow(grid, 1, lblPictureName, {&cmdGetPic, &cmdDelPic, &lblPicDim, &lblPicScale});
  AddField(grid, 2, lblArtistName, txtArtist);
  grid.SetColumnStretch(1, 1);
}

void CardEditor::ArrangeTexts() {
  GridLayout grid(fraTexts);
  txtBold.SetToolTip(QStringLiteral("S becomes STRENGTH, C becomes CRAFT"));
  AddField(grid, 0, lblBoldName, txtBold);
  AddField(grid, 1, lblInfoName, txtInfo);
  grid.SetColumnStretch(1, 1);
  grid.SetRowStretch(1, 1);
  SetMinimumSize(txtInfo, 220, 60);
}

void CardEditor::ArrangeBack() {
  GridLayout grid(fraBack);
  lblBackgroundName.SetBuddy(cmdBackPic);
  lblColourName.SetBuddy(cmdColour);
  lblCardBackName.SetBuddy(cboCardBack);
  cmdBackPic.SetAccessibleName(QStringLiteral("Select the background picture"));
  cmdLastBackPic.SetToolTip(QStringLiteral("The background picture that was chosen last"));
  cmdDelBackPic.SetAccessibleName(QStringLiteral("Remove the background picture"));
  Explain(cmdGetCardBack, QStringLiteral("Choose from the card backs"));
  ArrangeColour(picColour, cmdColour);
  AddRow(grid, 0, lblBackgroundName, {&cmdBackPic, &cmdLastBackPic, &cmdDelBackPic});
  AddRow(grid, 1, lblColourName, {&viewColour, &cmdColour});
  grid.Add(lblCardBackName, 2, 0);
  BoxLayout back = grid.AddBox(BoxLayout::Row, 2, 1);
  back.Add(cboCardBack, 1);
  back.Add(cmdGetCardBack);
  grid.SetColumnStretch(1, 1);
  SetFixedWidth(cmdGetCardBack, 32);
}

void CardEditor::Subscribe() {
  SubscribeTexts();
  SubscribePicture();
  cboType.Click = [this] { cboType_Click(); };
  cboNumber.Change = [this] { cboNumber_Change(); };
  cboNumber.Click = [this] { cboNumber_Change(); };
  cboCardBack.Click = [this] { cboCardBack_Click(); };
  cmdGetType.Click = [this] { cmdGetType_Click(); };
  cmdGetCardBack.Click = [this] { cmdGetCardBack_Click(); };
  cmdSort.Click = [this] { cmdSort_Click(); };
  cmdStat.Click = [this] { cmdStat_Click(); };
  udCopy.Change = [this] {
    if (!Loading) (void)Write("Copies", udCopy.Value());
  };
  chkOneLine.Click = [this] {
    if (!Loading && Write("OneLine", chkOneLine.Value() == 1)) DrawCard();
  };
}

void CardEditor::SubscribeTexts() {
  txtTitle.Change = [this] { WriteText("Title", txtTitle, preview_.lblTitle); };
  txtInfo.Change = [this] { WriteText("Information", txtInfo, preview_.lblInformation); };
  txtBold.Change = [this] { txtBold_Change(); };
  txtArtist.Change = [this] { txtArtist_Change(); };
  LeadTo(preview_.lblTitle, txtTitle);
  LeadTo(preview_.lblNumber, cboNumber);
  LeadTo(preview_.lblBold, txtBold);
  LeadTo(preview_.lblInformation, txtInfo);
  LeadTo(preview_.picArtistDest, txtArtist);
  for (const auto& label : preview_.lblType) {
    if (label != nullptr) LeadTo(*label, cboType);
  }
  txtTitle.GotFocus = [this] { SelectText(txtTitle); };
  txtBold.GotFocus = [this] { SelectText(txtBold); };
  txtArtist.GotFocus = [this] { SelectText(txtArtist); };
  cboNumber.GotFocus = [this] { SelectText(cboNumber); };
}

void CardEditor::SubscribePicture() {
  chkShowPicture.Click = [this] { chkShowPicture_Click(); };
  chkFrame.Click = [this] { chkFrame_Click(); };
  chkResize.Click = [this] { chkResize_Click(); };
  cmdGetPic.Click = [this] { cmdGetPic_Click(); };
  cmdDelPic.Click = [this] {
    cmdDelPic_Click();
    cmdGetPic.SetFocus();
  };
  cmdBackPic.Click = [this] { cmdBackPic_Click(); };
  cmdLastBackPic.Click = [this] { cmdLastBackPic_Click(); };
  cmdDelBackPic.Click = [this] {
    cmdDelBackPic_Click();
    cmdBackPic.SetFocus();
  };
  cmdColour.Click = [this] { cmdColour_Click(); };
  picColour.Click = [this] { cmdColour_Click(); };
  mover_.Attach();
  fitter_.Attach();
  TakeFillingPictures(preview_.picCard, Record(), "Background", [this] { RedrawArtist(); });
  handle_.Attach();
  preview_.picImage.KeyDown = [this](const KeyEvent& key) { picImage_KeyDown(key); };
}

Control* CardEditor::FieldOf(std::string_view column) {
  if (column == "Title") return &txtTitle;
  if (column == "CardTypeID") return &cboType;
  if (column == "BoldText") return &txtBold;
  if (column == "Information") return &txtInfo;
  return nullptr;
}

}  // namespace orv
