#include "editors/PictureFitter.h"

#include <algorithm>
#include <cmath>

#include "base/Files.h"
#include "base/Rounding.h"
#include "base/RuntimeError.h"
#include "forms/Application.h"
#include "forms/Dialogs.h"
#include "pictures/DroppedPicture.h"
#include "state/modData.h"

namespace orv {
namespace {

constexpr double kStep = 1.0905077326652577;  // eight of them double a picture
constexpr int kSmallestSide = 8;              // pixels, of the longer side
constexpr double kMostPixels = 16e6;          // of a picture that is larger than its file
constexpr int kDotsPerInch = 96;              // of a card in print

// What has lost its last digits on the way there and back is what it was.
double Snapped(double value, double grain) {
  const double whole = std::round(value / grain) * grain;
  return std::abs(value - whole) < 1e-6 * grain ? whole : value;
}

const char* ExtensionOf(const QByteArray& bytes) {
  if (bytes.startsWith("\xff\xd8")) return "jpg";
  if (bytes.startsWith("\x89PNG")) return "png";
  if (bytes.startsWith("RIFF")) return "webp";
  if (bytes.startsWith("GIF")) return "gif";
  return bytes.startsWith("BM") ? "bmp" : "wmf";
}

}  // namespace

PictureFitter::PictureFitter(FittedFrame frame)
    : frame_(std::move(frame)), picture_(frame_.table, frame_.column) {}

void PictureFitter::Attach() {
  frame_.frame.Wheel = [this](const WheelEvent& event) {
    const double border = frame_.frame.BorderStyle() * kTwipsPerPixel;
    Step(event.Steps, {event.X - border, event.Y - border});
  };
  frame_.frame.ContextMenu = [this](const MenuEvent& event) { FillMenu(event.Items); };
  frame_.frame.Drop = [this](const DropEvent& event) { Take(event.Data); };
}

void PictureFitter::Show() {
  picture_.Show(frame_.record.Key(), frame_.record[frame_.column]);
  ShowReadout();
}

void PictureFitter::ShowReadout() {
  if (!HasPicture()) {
    frame_.readout.SetCaption(QString());
    return;
  }
  const double percent = picture_.Scale() * 100;
  frame_.readout.SetCaption(QStringLiteral("%1 %, %2 dpi")
                                .arg(QString::number(percent, 'f', percent < 10 ? 1 : 0))
                                .arg(std::lround(kDotsPerInch / picture_.Scale())));
}

struct PictureFitter::Command {
  enum Needs { Picture, Scaling, Clipboard };
  const char* caption;
  const char* keys;
  Needs needs;
  void (*run)(PictureFitter& fitter);
};

const PictureFitter::Command PictureFitter::kCommands[] = {
    {"&Fit the frame", "Ctrl+1", Command::Scaling, [](PictureFitter& f) { f.Fit(Fitting::Inside); }},
    {"F&ill the frame", "Ctrl+2", Command::Scaling, [](PictureFitter& f) { f.Fit(Fitting::Over); }},
    {"&Natural size", "Ctrl+0", Command::Scaling, [](PictureFitter& f) { f.Natural(); }},
    {"&Larger", "Ctrl++", Command::Scaling, [](PictureFitter& f) { f.Step(1, f.Middle()); }},
    {"S&maller", "Ctrl+-", Command::Scaling, [](PictureFitter& f) { f.Step(-1, f.Middle()); }},
    {"&Paste", "Ctrl+V", Command::Clipboard, [](PictureFitter& f) { f.Paste(); }},
    {"&Copy", "Ctrl+C", Command::Picture, [](PictureFitter& f) { f.Copy(); }},
    {"&Save picture as...", "Ctrl+S", Command::Picture, [](PictureFitter& f) { f.Save(); }},
    {"&Remove", "Del", Command::Picture, [](PictureFitter& f) { f.frame_.remove(); }},
};

QStringList PictureFitter::Commands() {
  QStringList keys;
  for (const Command& command : kCommands) keys += QLatin1String(command.keys);
  return keys;
}

bool PictureFitter::CanRun(const Command& command) const {
  if (command.needs == Command::Clipboard) return Clipboard::HasData();
  return HasPicture() && (command.needs == Command::Picture || picture_.CanScale());
}

bool PictureFitter::KeyDown(const KeyEvent& key) {
  // A plus needs Shift on some keyboards.
  const bool plus = key.KeyCode == kKeyPlus && (key.Shift & ~kShift) == kCtrl;
  const KeyEvent meant{key.KeyCode, plus ? kCtrl : key.Shift};
  for (const Command& command : kCommands) {
    if (KeyOf(QLatin1String(command.keys)) != meant) continue;
    if (command.needs != Command::Clipboard && CanRun(command)) command.run(*this);
    return true;
  }
  return false;
}

PictureFitter::Point PictureFitter::Middle() const {
  return {frame_.frame.InsideWidth() * kTwipsPerPixel / 2.0,
          frame_.frame.InsideHeight() * kTwipsPerPixel / 2.0};
}

bool PictureFitter::MayScaleTo(double scale) const {
  const QSize size = picture_.SizeAt(scale);
  const double pixels = double(size.width()) * size.height();
  if (scale < picture_.Scale()) return std::max(size.width(), size.height()) >= kSmallestSide;
  return scale <= 1 || (pixels <= kMostPixels && std::max(size.width(), size.height()) <= 32767);
}

// The point of the picture that lies at `about` stays there.
void PictureFitter::Step(int steps, const Point& about) {
  if (!HasPicture() || !frame_.record.Hold() || !picture_.Prepare(frame_.record[frame_.column])) return;
  const double former = picture_.Scale();
  double scale = former;
  for (; steps != 0; steps -= steps > 0 ? 1 : -1) {
    const double next = Snapped(scale * std::pow(kStep, steps > 0 ? 1 : -1), 1);
    if (!MayScaleTo(next)) break;
    scale = next;
  }
  if (scale == former) return;
  const double grown = scale / former;
  // Where the frame follows the picture, the picture's own place in it says nothing.
  const double x = about.x - frame_.image.Left(), y = about.y - frame_.image.Top();
  Store(scale, frame_.record[frame_.left_column].NumberOr(0) + x * (1 - grown),
        frame_.record[frame_.top_column].NumberOr(0) + y * (1 - grown));
}

void PictureFitter::Natural() {
  if (!HasPicture() || !frame_.record.Hold() || !picture_.Prepare(frame_.record[frame_.column])) return;
  const double grown = 1 / picture_.Scale();
  const Point about = Middle();
  const double x = about.x - frame_.image.Left(), y = about.y - frame_.image.Top();
  Store(1, frame_.record[frame_.left_column].NumberOr(0) + x * (1 - grown),
        frame_.record[frame_.top_column].NumberOr(0) + y * (1 - grown));
}

void PictureFitter::Fit(Fitting fitting) {
  if (!HasPicture() || !frame_.record.Hold() || !picture_.Prepare(frame_.record[frame_.column])) return;
  FitPrepared(fitting);
}

void PictureFitter::FitPrepared(Fitting fitting) {
  const QSize room = frame_.room(), natural = picture_.NaturalSize();
  const double across = double(room.width()) / natural.width();
  const double down = double(room.height()) / natural.height();
  const double scale = fitting == Fitting::Inside ? std::min(across, down) : std::max(across, down);
  const QSize size = picture_.SizeAt(scale);
  // On whole pixels, so that no edge is left white.
  const auto centred = [](int inside, int side) {
    return std::floor((inside - side) / 2.0) * kTwipsPerPixel;
  };
  Store(scale, centred(room.width(), size.width()), centred(room.height(), size.height()));
}

void PictureFitter::Store(double scale, double left, double top) {
  const FittedPicture::Made made = picture_.Make(scale);
  {
    Transaction transaction(modData::cn);
    if (!frame_.record.Write({{frame_.column, made.bytes},
                              {frame_.left_column, Snapped(left, 1)},
                              {frame_.top_column, Snapped(top, 1)}})) {
      return;
    }
    picture_.Keep(scale, made);
    transaction.Commit();
  }
  frame_.image.SetPicture(made.picture);
  frame_.place();
  ShowReadout();
}

void PictureFitter::Take(const DataObject& data) {
  if (Fill(data)) frame_.image.SetFocus();
}

bool PictureFitter::Fill(const DataObject& data) {
  if (data.IsEmpty() || !frame_.record.Hold()) return false;
  try {
    const QByteArray bytes = BytesOf(data);
    const WaitCursor hourglass;
    picture_.Take(bytes);
  } catch (const RuntimeError& error) {
    TellUnreadable(data, error);
    return false;
  }
  FitPrepared(Fitting::Over);
  return true;
}

void PictureFitter::Paste() {
  Fill(Clipboard::GetData());
}

void PictureFitter::Copy() const {
  Clipboard::SetImage(frame_.image.Picture());
}

void PictureFitter::Save() {
  if (!HasPicture() || !frame_.record.Hold()) return;
  const QByteArray bytes = picture_.File(frame_.record[frame_.column]);
  const QString extension = QLatin1String(ExtensionOf(bytes));
  CommonDialog dialog;
  dialog.DialogTitle = QStringLiteral("Save picture as");
  dialog.CancelError = true;
  dialog.Filter = QStringLiteral("%1 (*.%2)|*.%2|All files (*.*)|*.*").arg(extension.toUpper(), extension);
  dialog.DefaultExt = extension;
  dialog.Flags = 0x2;
  try {
    dialog.ShowSave();
    ReplaceFile(dialog.FileName, bytes);
  } catch (const RuntimeError& error) {
    if (error.Number() == kErrCancel) return;
    MsgBox(QStringLiteral("The picture could not be saved.\r\n\r\n") + error.NumberAndDescription(),
           Icon::Exclamation, QStringLiteral("Save picture as"));
  }
}

void PictureFitter::FillMenu(std::vector<MenuItem>& items) {
  for (const Command& command : kCommands) {
    if (command.needs == Command::Clipboard) items.push_back({});
    items.push_back({QLatin1String(command.caption), QLatin1String(command.keys), CanRun(command),
                     [this, run = command.run] { run(*this); }});
  }
}

QSize InsideOf(const Surface& frame) {
  return {frame.InsideWidth(), frame.InsideHeight()};
}

void ExplainScale(FormLabel& readout) {
  readout.SetToolTip(
      QStringLiteral("Size of the picture, and how fine it is in print.\nWheel: larger, smaller. "
                     "Right button: more. Drop a picture on the frame to have it fill it."));
}

void TakeFillingPictures(Surface& surface, ShownRecord& record, const char* column,
                         std::function<void()> shown) {
  TakePictures(surface, [&surface, &record, column, shown = std::move(shown)](const DataObject& data) {
    if (data.IsEmpty() || !record.Hold()) return;
    const Picture picture = PictureOf(data, [&](const QByteArray& bytes) {
      return FillingPicture(bytes, static_cast<int>(surface.Width()), static_cast<int>(surface.Height()));
    });
    if (picture.IsEmpty() || !record.Write({{column, BitmapFile(picture)}})) return;
    surface.SetPicture(picture);
    shown();
  });
}

}  // namespace orv
