// What both working windows share: the one activation that carries a caller's job.
#pragma once

#include <any>

namespace vellumo::ui {

struct Activation {
  bool pending = true;
  std::any parameters;
  std::any result;
};

} // namespace vellumo::ui
