#include "forms/form_run.h"

constinit FormRun* CurrentForm = nullptr;

FormRun* FindForm(const WINDOW* window) {
  FormRun* form = CurrentForm;
  while (form != nullptr && form->window != window) {
    form = form->outer;
  }
  return form;
}

void ForgetScroll(const WINDOW* window) {
  if (FormRun* form = FindForm(window); form != nullptr) {
    form->ScrollOffset = 0;
  }
}
