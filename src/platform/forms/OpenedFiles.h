#pragma once

#include <QString>
#include <functional>
#include <memory>

// A file that the user opens while a window of the program is there goes to that window: the new process
// hands it over and ends. What a window works on, such as its database, tells which one it is. All of it
// happens among the processes of one user, in the user's own folder for what runs.
namespace orv {

// Takes files as long as it lives. There may be several on one thing; each is asked until one answers.
class OpenedFiles {
 public:
  // `open` gets each file once no dialog waits for an answer. Where nothing can be received, all else works.
  OpenedFiles(const QString& works_on, std::function<void(const QString& file)> open);
  ~OpenedFiles();
  OpenedFiles(const OpenedFiles&) = delete;
  OpenedFiles& operator=(const OpenedFiles&) = delete;

 private:
  struct Impl;
  std::unique_ptr<Impl> impl_;
};

enum class HandedOver { Taken, NobodyThere, NoAnswer };
// Gives a file to a window that works on this. Without an answer within some seconds the window doesn't get
// it later, either.
HandedOver HandFileOver(const QString& works_on, const QString& file);

}  // namespace orv
