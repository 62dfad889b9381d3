#pragma once

#include <gtest/gtest.h>

#include <QFile>
#include <QImage>
#include <QProcess>

#include "print/PrintSheets.h"
#include "state/modData.h"
#include "support/TestDatabase.h"

namespace orv {

// A set, and the PDF file of it, read by another program.
class PdfScene {
 protected:
  void OpenSample(const char* name) {
    const QString file = database_.Path("delivered.mdb");
    ASSERT_TRUE(QFile::exists(file) || QFile::copy(ORV_DELIVERED_DATABASE, file));
    modData::cn = Connection();
    modData::OpenDatabase([] {}, file);
    modData::OpenEditable("SELECT * FROM tblSet ORDER BY SetName", modData::rsSet);
    modData::rsSet.FindFirst(QString("SetName = '%1'").arg(name));
    database_.SelectSet(modData::rsSet["SetID"].Int16());
  }
  void OpenCards(int count) {
    const int set = database_.AddSet("Set", 2);
    for (int nr = 1; nr <= count; ++nr) database_.AddCard(set, nr, QString("Card %1").arg(nr));
    database_.SelectSet(set);
  }
  QString Pdf() const { return database_.Path("sheets.pdf"); }
  PrintOutcome Print(std::initializer_list<std::pair<const char*, const char*>> texts) {
    PrintOptions options;
    for (const auto& [name, text] : texts) EXPECT_EQ(SetPrintOption(options, name, text), "");
    return PrintSheets(options, Pdf(), [](int, int) { return true; });
  }
  // What a program of poppler says of the file.
  QString Read(const QString& program, QStringList options, bool to_output = true) {
    options << Pdf();
    if (to_output) options << "-";
    QProcess process;
    process.start(program, options);
    EXPECT_TRUE(process.waitForFinished() && process.exitCode() == 0)
        << qPrintable(program) << " is of poppler-utils";
    return QString::fromUtf8(process.readAllStandardOutput());
  }
  // Dots an inch of each picture in the file.
  QList<int> DotsOfPictures() {
    QList<int> dots;
    for (const QString& line : Read("pdfimages", {"-list"}, false).split('\n', Qt::SkipEmptyParts).mid(2)) {
      dots.append(line.simplified().split(' ').value(12).toInt());
    }
    return dots;
  }
  QImage Page(int number, int dots) {
    const QString root = database_.Path("page");
    QProcess::execute("pdftoppm", {"-r", QString::number(dots), "-f", QString::number(number), "-l",
                                   QString::number(number), "-singlefile", Pdf(), root});
    return QImage(root + ".ppm");
  }

  TestDatabase database_;
};

}  // namespace orv
