#include "ui/form.h"

namespace vellumo::ui {

void Form::RefreshView() {
  if (m_view != nullptr) {
    m_view->Refresh();
  }
}

} // namespace vellumo::ui
