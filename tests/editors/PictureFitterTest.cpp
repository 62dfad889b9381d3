#include "editors/PictureFitter.h"

#include <QBuffer>
#include <QClipboard>
#include <QGuiApplication>
#include <QImage>
#include <QtEndian>

#include "base/Files.h"
#include "base/Rounding.h"
#include "editors/EditorScene.h"
#include "editors/frmCard2nd.h"
#include "editors/frmCard3rd.h"
#include "editors/frmCharacter2nd.h"
#include "editors/frmLarge2nd.h"
#include "state/modData.h"
#include "support/Gestures.h"
#include "support/Widgets.h"

namespace orv {
namespace {

// A picture in the frame of an editor.
struct Parts {
  const SurfaceView& view;
  Surface& frame;
  Surface& image;
  const FormLabel& readout;
};

struct FrameKind {
  const char* name;
  const EditorKind& editor;
  const char *column, *left, *top;
  Parts (*parts)();
};

template <class Editor>
Parts OfCard(Editor& editor) {
  return {editor.viewCard, editor.Preview().picFrame, editor.Preview().picImage, editor.lblPicScale};
}

const FrameKind kFrames[] = {
    {"card2nd", kCard2nd, "Picture", "PicLeft", "PicTop", [] { return OfCard(*frmCard2nd); }},
    {"card3rd", kCard3rd, "Picture", "PicLeft", "PicTop", [] { return OfCard(*frmCard3rd); }},
    {"large", kLargeCard, "Picture", "PicLeft", "PicTop",
     [] {
       LargeCardPreview& preview = frmLarge2nd->Preview();
       return Parts{frmLarge2nd->viewCard, preview.picFrameLarge, preview.picImageLarge,
                    frmLarge2nd->lblPicScaleLarge};
     }},
    {"character", kCharacter, "Picture", "PicLeft", "PicTop",
     [] {
       CharacterPreview& preview = frmCharacter2nd->Preview();
       return Parts{frmCharacter2nd->viewCharacter, preview.picFrameCharacter, preview.picImageCharacter,
                    frmCharacter2nd->lblPicScaleChar};
     }},
    {"piece", kCharacter, "PlayingPiece", "PPLeft", "PPTop",
     [] {
       CharacterPreview& preview = frmCharacter2nd->Preview();
       return Parts{frmCharacter2nd->viewPiece, preview.picPlayingPieceFrame, preview.picPlayingPieceImage,
                    frmCharacter2nd->lblPicScalePlay};
     }},
};

QByteArray PngOf(const QImage& image) {
  QByteArray bytes;
  QBuffer buffer(&bytes);
  EXPECT_TRUE(buffer.open(QIODevice::WriteOnly) && image.save(&buffer, "png"));
  return bytes;
}

// A photo's many shades: red grows to the right, green downwards.
QByteArray Shades(int width, int height) {
  QImage image(width, height, QImage::Format_RGB32);
  for (int y = 0; y < height; ++y) {
    for (int x = 0; x < width; ++x) image.setPixel(x, y, qRgb(x * 255 / width, y * 255 / height, 77));
  }
  return PngOf(image);
}

class FittingScene : protected EditorScene {
 protected:
  explicit FittingScene(const FrameKind& kind) : EditorScene(kind.editor), frame_(kind) {
    Open(2);
    Editor().cmdCardNav_Click(0);
  }

  Parts Frame() const { return frame_.parts(); }
  // The corner of the frame's inside in its view, in pixels.
  QPointF Corner() const {
    QPointF corner;
    for (const SurfaceItem* item = &Frame().frame; item->Container() != nullptr; item = item->Container()) {
      corner += QPointF(item->Left(), item->Top());
      corner += QPointF(1, 1) * item->Container()->BorderStyle();
    }
    return corner + QPointF(1, 1) * Frame().frame.BorderStyle();
  }
  QPointF Middle() const {
    return Corner() + QPointF(Frame().frame.InsideWidth(), Frame().frame.InsideHeight()) / 2;
  }
  QByteArray StoredBytes(const char* column) const {
    return modData::OpenSnapshot(QStringLiteral("SELECT %1 FROM %2 WHERE SetID = %3 AND Nr = 1")
                                     .arg(column, kind_.table)
                                     .arg(set_))[column]
        .Bytes();
  }
  QByteArray StoredPicture() const { return StoredBytes(frame_.column); }
  QString StoredPlace() { return Stored(QStringLiteral("%1 || ' ' || %2").arg(frame_.left, frame_.top)); }
  QString Originals() {
    return database_.Scalar("SELECT COUNT(*) || ' ' || SUM(LENGTH(File)) FROM tblOriginal");
  }
  void DropShades(int width, int height) {
    const QString file = database_.WriteFile("shades.png", Shades(width, height));
    EXPECT_TRUE(DropFiles(Frame().view, Middle().x(), Middle().y(), {file}));
  }
  // What is stored, shown and told agree.
  void ExpectWhole(double scale) {
    const QByteArray stored = StoredPicture();
    const Picture picture = LoadPicture(stored);
    EXPECT_EQ(picture.Image(), Frame().image.Picture().Image());
    EXPECT_EQ(qRound(Stored(frame_.left).toDouble()), qRound(Frame().image.Left()));
    const QString told = Frame().readout.Caption();
    EXPECT_EQ(told.section(u' ', 0, 0).toDouble(), qRound(scale * 100)) << told.toStdString();
    EXPECT_EQ(told.section(u' ', 2, 2).toInt(), qRound(96 / scale)) << told.toStdString();
  }

  const FrameKind& frame_;
};

class FitterOfEach : public testing::TestWithParam<FrameKind>, protected FittingScene {
 protected:
  FitterOfEach() : FittingScene(GetParam()) {}
};

std::string NameOf(const testing::TestParamInfo<FrameKind>& frame) {
  return frame.param.name;
}
INSTANTIATE_TEST_SUITE_P(Frames, FitterOfEach, testing::ValuesIn(kFrames), NameOf);

TEST_P(FitterOfEach, ADroppedFileFillsTheFrameAndStays) {
  DropShades(800, 600);
  const int width = Frame().frame.InsideWidth(), height = Frame().frame.InsideHeight();
  const double scale = std::max(width / 800.0, height / 600.0);
  ExpectWhole(scale);
  const Picture stored = LoadPicture(StoredPicture());
  EXPECT_TRUE(StoredPicture().startsWith("BM"));
  EXPECT_EQ(stored.Width(), qRound(800 * scale));
  EXPECT_EQ(stored.Height(), qRound(600 * scale));
  const double left = Stored(frame_.left).toDouble() / 15, top = Stored(frame_.top).toDouble() / 15;
  EXPECT_LE(left, 0);
  EXPECT_GE(left + stored.Width(), width);
  EXPECT_NEAR(left, (width - stored.Width()) / 2.0, 0.51);
  EXPECT_NEAR(top, (height - stored.Height()) / 2.0, 0.51);
  EXPECT_EQ(Originals(), QStringLiteral("1 %1").arg(Shades(800, 600).size()));
  EXPECT_EQ(Stored(QStringLiteral("%1 IS NULL").arg(frame_.column), 2), "1");
  // Shown anew, it is told the same.
  Editor().cmdCardNav_Click(1);
  Editor().cmdCardNav_Click(3);
  EXPECT_EQ(Frame().readout.Caption(), "");
  Editor().cmdCardNav_Click(0);
  ExpectWhole(scale);
}

TEST_P(FitterOfEach, TenStepsInAndOutAreNone) {
  DropShades(800, 600);
  const QByteArray before = StoredPicture();
  const QString place = StoredPlace();
  const QPointF mouse = Corner() + QPointF(20, 31);
  const auto under_mouse = [&] {
    const int x = int(20 - Frame().image.Left() / 15), y = int(31 - Frame().image.Top() / 15);
    return Frame().image.Picture().Image().pixel(x, y);
  };
  const QRgb colour = under_mouse();
  int width = Frame().image.Picture().Width();
  for (int step = 0; step < 10; ++step) {
    TurnWheel(Frame().view, mouse.x(), mouse.y(), 1);
    EXPECT_GT(Frame().image.Picture().Width(), width);
    width = Frame().image.Picture().Width();
    EXPECT_NEAR(qRed(under_mouse()), qRed(colour), 6);
    EXPECT_NEAR(qGreen(under_mouse()), qGreen(colour), 6);
    EXPECT_EQ(LoadPicture(StoredPicture()).Width(), width);
  }
  EXPECT_NEAR(width, LoadPicture(before).Width() * std::pow(2, 10 / 8.0), 2);
  // Another walk away and back between them takes nothing.
  Editor().cmdCardNav_Click(3);
  Editor().cmdCardNav_Click(0);
  for (int step = 0; step < 10; ++step) TurnWheel(Frame().view, mouse.x(), mouse.y(), -1);
  EXPECT_EQ(StoredPicture(), before);
  EXPECT_EQ(StoredPlace(), place);
}

TEST_P(FitterOfEach, KeysAndTheMenu) {
  DropShades(300, 900);
  Frame().image.SetFocus();
  const int width = Frame().frame.InsideWidth(), height = Frame().frame.InsideHeight();
  const double fill = std::max(width / 300.0, height / 900.0), fit = std::min(width / 300.0, height / 900.0);
  const double step = std::pow(2, 1 / 8.0);
  const auto press = [&](int key) { PressKey(Frame().view, key, Qt::ControlModifier); };
  const auto choose = [&](const char* caption) {
    EXPECT_TRUE(ChooseFromMenu(Frame().view, Middle().x(), Middle().y(), caption)) << caption;
  };
  ExpectWhole(fill);
  press(Qt::Key_Plus);
  ExpectWhole(fill * step);
  press(Qt::Key_Minus);
  ExpectWhole(fill);
  press(Qt::Key_0);
  ExpectWhole(1);
  EXPECT_EQ(StoredPicture(), Shades(300, 900)) << "the file itself";
  EXPECT_EQ(Originals(), "~") << "which needs no copy";
  press(Qt::Key_1);
  ExpectWhole(fit);
  press(Qt::Key_2);
  ExpectWhole(fill);
  choose("Fit the frame");
  ExpectWhole(fit);
  choose("Natural size");
  ExpectWhole(1);
  EXPECT_TRUE(ChooseFromMenuByKey(Frame().view, "Fill the frame"));
  ExpectWhole(fill);
  choose("Copy");
  EXPECT_EQ(QGuiApplication::clipboard()->image().size(), Frame().image.Picture().Image().size());
  dialogs_.files = {database_.Path("saved.png")};
  choose("Save picture as...");
  EXPECT_EQ(ReadWhole(database_.Path("saved.png")), Shades(300, 900));
  choose("Remove");
  EXPECT_EQ(Stored(QStringLiteral("%1 IS NULL").arg(frame_.column)), "1");
  EXPECT_EQ(Originals(), "~");
  EXPECT_EQ(Frame().readout.Caption(), "");
  EXPECT_FALSE(ChooseFromMenu(Frame().view, Middle().x(), Middle().y(), "Fit the frame"));
}

class Fitter : public testing::Test, protected FittingScene {
 protected:
  Fitter() : FittingScene(kFrames[0]) {}
};

TEST_F(Fitter, APictureOfTheButtonIsItsOwnOriginal) {
  dialogs_.files = {database_.WriteFile("plain.bmp", TestDatabase::GradientPicture(200, 100))};
  ClickOn(frmCard2nd->cmdGetPic);
  const QByteArray chosen = StoredPicture();
  ExpectWhole(1);
  TurnWheel(Frame().view, Middle().x(), Middle().y(), -3);
  ExpectWhole(std::pow(2, -3 / 8.0));
  EXPECT_EQ(LoadPicture(StoredPicture()).Width(), 154);
  TurnWheel(Frame().view, Middle().x(), Middle().y(), 3);
  EXPECT_EQ(StoredPicture(), chosen);
  // Another one drops it.
  TurnWheel(Frame().view, Middle().x(), Middle().y(), -3);
  EXPECT_TRUE(Originals().startsWith("1 "));
  dialogs_.files = {database_.WriteFile("other.bmp", TestDatabase::GradientPicture(60, 60))};
  ClickOn(frmCard2nd->cmdGetPic);
  EXPECT_EQ(Originals(), "~");
  EXPECT_EQ(Frame().readout.Caption(), "100 %, 96 dpi");
}

// The picture that another program has stored counts, and what it was made of before doesn't.
TEST_F(Fitter, AnOriginalThatIsStaleIsDropped) {
  DropShades(800, 600);
  const QByteArray other = TestDatabase::GradientPicture(100, 50);
  const int card = Stored("CardID").toInt();
  database_.Store("tblCard", card, "Picture", other);
  TurnWheel(Frame().view, Middle().x(), Middle().y(), 8);
  EXPECT_EQ(LoadPicture(StoredPicture()).Image().size(), QSize(200, 100));
  EXPECT_EQ(Originals(), QStringLiteral("1 %1").arg(other.size()));
  database_.Store("tblCard", card, "Picture", other);
  Editor().cmdCardNav_Click(0);
  EXPECT_EQ(Originals(), "~");
  ExpectWhole(1);
}

TEST_F(Fitter, WhatIsNoPictureIsToldAndNotStored) {
  DropShades(80, 60);
  const QByteArray before = StoredPicture();
  const QString originals = Originals();
  const QString text = database_.WriteFile("notes.txt", "no picture at all");
  EXPECT_TRUE(DropFiles(Frame().view, Middle().x(), Middle().y(), {text}));
  EXPECT_TRUE(dialogs_.LastPrompt().startsWith("\"notes.txt\" is no picture"))
      << dialogs_.LastPrompt().toStdString();
  QMimeData broken;
  broken.setData("image/png", Shades(80, 60).left(90));
  EXPECT_TRUE(DropOn(Frame().view, Middle().x(), Middle().y(), broken));
  EXPECT_TRUE(DropFiles(Frame().view, Middle().x(), Middle().y(), {database_.Path("gone.png")}));
  EXPECT_EQ(dialogs_.LastPrompt(), "\"gone.png\" can't be read.\r\n\r\n53, File not found");
  EXPECT_EQ(dialogs_.boxes.size(), 3U);
  QMimeData words;
  words.setText("words");
  EXPECT_FALSE(DropOn(Frame().view, Middle().x(), Middle().y(), words));
  EXPECT_EQ(StoredPicture(), before);
  EXPECT_EQ(Originals(), originals);
  // What was refused is no original of what is there.
  TurnWheel(Frame().view, Middle().x(), Middle().y(), 1);
  TurnWheel(Frame().view, Middle().x(), Middle().y(), -1);
  EXPECT_EQ(StoredPicture(), before);
}

TEST_F(Fitter, APictureIsPasted) {
  Frame().image.SetFocus();
  auto* const data = new QMimeData;
  data->setData("image/png", Shades(500, 400));
  QGuiApplication::clipboard()->setMimeData(data);
  PressKey(Frame().view, Qt::Key_V, Qt::ControlModifier);
  EXPECT_EQ(Originals(), QStringLiteral("1 %1").arg(Shades(500, 400).size()));
  QImage half(100, 80, QImage::Format_ARGB32);
  half.fill(qRgba(255, 0, 0, 0));
  QGuiApplication::clipboard()->setImage(half);
  EXPECT_TRUE(ChooseFromMenu(Frame().view, Middle().x(), Middle().y(), "Paste"));
  EXPECT_EQ(Frame().image.Picture().Image().pixel(3, 3), 0xFFFFFFFF) << "over white";
  QGuiApplication::clipboard()->clear();
}

// However many steps wait, one write shows them.
TEST_F(Fitter, AFastWheelWritesOnce) {
  DropShades(800, 600);
  const auto changes = [&] {
    return qFromBigEndian<quint32>(ReadWhole(database_.Path("orv.mdb")).constData() + 24);
  };
  TurnWheel(Frame().view, Middle().x(), Middle().y(), 1);
  const quint32 before = changes();
  TurnWheel(Frame().view, Middle().x(), Middle().y(), 5);
  EXPECT_EQ(changes(), before + 1);
}

TEST_F(Fitter, AFileWithoutOriginalsOnlyLacksTheScaling) {
  for (const char* table : {"Card", "Set", "Character", "LargeCard", "CardBack", "CharacterBack"})
    database_.Execute(QStringLiteral("DROP TRIGGER tblOriginal_of%1").arg(table));
  database_.Execute("DROP VIEW tblOriginal");
  database_.Execute("DROP TABLE tblOriginal_rows");
  database_.Execute("DROP TABLE tblOriginal_long");
  Editor().cmdCardNav_Click(0);
  DropShades(800, 600);
  const QByteArray stored = StoredPicture();
  EXPECT_EQ(LoadPicture(stored).Height(), Frame().frame.InsideHeight());
  TurnWheel(Frame().view, Middle().x(), Middle().y(), 5);
  EXPECT_EQ(StoredPicture(), stored);
  EXPECT_FALSE(ChooseFromMenu(Frame().view, Middle().x(), Middle().y(), "Fit the frame"));
  EXPECT_TRUE(ChooseFromMenu(Frame().view, Middle().x(), Middle().y(), "Remove"));
}

// Where the frame hugs the picture, the picture's place is the frame's.
TEST_F(Fitter, WithResizeTheFrameFollows) {
  ClickOn(frmCard2nd->chkResize);
  DropShades(800, 600);
  const double width = Frame().frame.Width(), middle = Frame().frame.Left() + width / 2;
  PressKey(Frame().view, Qt::Key_Minus, Qt::ControlModifier);
  EXPECT_LT(Frame().frame.Width(), width);
  EXPECT_NEAR(Frame().frame.Left() + Frame().frame.Width() / 2, middle, 1.5);
}

TEST_F(Fitter, FilesBesideTheCardMakeCards) {
  const QStringList files = {database_.WriteFile("Old tower.png", Shades(400, 300)),
                             database_.WriteFile("list.txt", "no picture"),
                             database_.WriteFile("River.v2.png", Shades(300, 400))};
  dialogs_.answers = {Answer::No, Answer::Yes};
  EXPECT_TRUE(DropFiles(Editor(), 5, 5, files));
  EXPECT_EQ(database_.Scalar("SELECT COUNT(*) FROM tblCard"), "2");
  EXPECT_EQ(dialogs_.LastPrompt(), "Make a new card of each of these 3 pictures?");
  EXPECT_TRUE(DropFiles(Editor(), 5, 5, files));
  EXPECT_EQ(
      database_.Scalar("SELECT group_concat(Title) FROM (SELECT * FROM tblCard WHERE Nr > 2 ORDER BY Nr)"),
      "Old tower,River.v2");
  EXPECT_EQ(dialogs_.boxes.size(), 3U);
  EXPECT_EQ(Position(), "4 (4)");
  EXPECT_EQ(frmCard2nd->txtTitle.Text(), "River.v2");
  EXPECT_EQ(database_.Scalar("SELECT COUNT(*) FROM tblOriginal"), "2");
  database_.Execute("DELETE FROM tblSet");
  EXPECT_EQ(database_.Scalar("SELECT COUNT(*) FROM tblOriginal_long"), "0");
}

// A background or back has the size of its area to its edges, dropped or pasted.
struct AreaKind {
  const char* name;
  const FrameKind& frame;  // of the same editor
  const char* column;
  const SurfaceView& (*view)();
  const Surface& (*surface)();
  QPointF place;
};

template <auto& editor>
const SurfaceView& CardView() {
  return editor->viewCard;
}

const AreaKind kAreas[] = {
    {"card2nd",
     kFrames[0],
     "Background",
     CardView<frmCard2nd>,
     []() -> const Surface& { return frmCard2nd->Preview().picCard; },
     {3, 250}},
    {"card3rd",
     kFrames[1],
     "Background",
     CardView<frmCard3rd>,
     []() -> const Surface& { return frmCard3rd->Preview().picCard; },
     {3, 240}},
    {"large",
     kFrames[2],
     "BGPicture",
     CardView<frmLarge2nd>,
     []() -> const Surface& { return frmLarge2nd->Preview().picCardLarge; },
     {3, 3}},
    {"back",
     kFrames[2],
     "LargeCardBack",
     []() -> const SurfaceView& { return frmLarge2nd->viewBack; },
     []() -> const Surface& { return frmLarge2nd->Preview().picBackLarge; },
     {50, 50}},
    {"character",
     kFrames[3],
     "Background",
     []() -> const SurfaceView& { return frmCharacter2nd->viewCharacter; },
     []() -> const Surface& { return frmCharacter2nd->Preview().picBackgroundChar; },
     {200, 120}},
};

class FilledArea : public testing::TestWithParam<AreaKind>, protected FittingScene {
 protected:
  FilledArea() : FittingScene(GetParam().frame) {}
};

INSTANTIATE_TEST_SUITE_P(Areas, FilledArea, testing::ValuesIn(kAreas),
                         [](const testing::TestParamInfo<AreaKind>& area) {
                           return std::string(area.param.name);
                         });

TEST_P(FilledArea, TakesWhatIsDroppedOrPasted) {
  const auto& [name, frame, column, view, surface, place] = GetParam();
  const auto expect_filled = [&, column = column, surface = surface] {
    const QImage stored = LoadPicture(StoredBytes(column)).Image();
    EXPECT_EQ(stored.size(), QSize(int(surface().Width()), int(surface().Height())));
    EXPECT_EQ(stored, surface().Picture().Image());
    return stored;
  };
  const QString file = database_.WriteFile("shades.png", Shades(900, 200));
  EXPECT_TRUE(DropFiles(view(), place.x(), place.y(), {file}));
  const QImage dropped = expect_filled();
  EXPECT_NEAR(qRed(dropped.pixel(dropped.width() / 2, 100)), 127, 3) << "cut evenly";
  QImage green(400, 900, QImage::Format_RGB32);
  green.fill(Qt::green);
  QGuiApplication::clipboard()->setImage(green);
  EXPECT_TRUE(ChooseFromMenu(view(), place.x(), place.y(), "Paste"));
  EXPECT_EQ(expect_filled().pixel(20, 20), qRgb(0, 255, 0));
  QGuiApplication::clipboard()->clear();
  EXPECT_EQ(Originals(), "~");
  EXPECT_EQ(Stored(QStringLiteral("%1 IS NULL").arg(frame.column)), "1") << "the frame is left";
}

}  // namespace
}  // namespace orv
