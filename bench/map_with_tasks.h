// A session with a map of many Tasks on one page, made by drops as a user makes them.
#pragma once

#include <cstdio>
#include <cstdlib>
#include <string>

#include "session/session.h"

namespace quorvel {

class MapWithTasks {
 public:
  explicit MapWithTasks(int tasks) : session(options()) {
    session.platform().onForm = [](Form& form) {
      if (Control* ok = form.find("BtnOK")) ok->click();
    };
    map = session.app().Documents().Add(session.templatePath());
    page = map.Pages().Item(1);
    task = session.app().Documents().Open(session.stencilPath()).Masters().Item("Task");
    if (!page || !task) {
      std::fprintf(stderr, "The template or the stencil in %s can't be opened.\n", session.installFolder().c_str());
      std::exit(3);
    }
    drop(tasks);
  }

  /// Returns the last one.
  Shape drop(int count) {
    Shape last;
    for (int i = 0; i < count; ++i, ++dropped) last = page.Drop(task, 1 + dropped % 100 * 3, 1 + dropped / 100 * 3);
    return last;
  }

  Session session;
  Document map;
  Page page;
  Master task;
  int dropped = 0;

 private:
  static SessionOptions options() {
    SessionOptions options;
    options.installFolder = std::string(QUORVEL_SOURCE_FOLDER) + "/data";
    return options;
  }
};

}  // namespace quorvel
