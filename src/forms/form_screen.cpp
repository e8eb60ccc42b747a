#include "forms/forms.h"
#include "forms/layer.h"
#include "forms/screen_drawing.h"
#include "forms/window.h"
#include "shell/trace_log.h"

namespace {

// A screen as it shows below its form. As it fills the terminal, curses fits its window.
class ScreenLayer final : public Layer {
 public:
  ScreenLayer(WINDOW* window, const FormScreen& screen) : Layer(window), screen_(screen) {}

  bool LayOut() override {
    Frame(window());
    DrawScreen(window(), screen_.table, screen_.title);
    return true;
  }

 private:
  const FormScreen& screen_;
};

void RunForm(const FormScreen& screen, WINDOW* window, KeyHandler handler) {
  const ScreenLayer layer(window, screen);
  PaintScreen(window, screen.table, screen.title);
  ProcessWindowData(window, screen.table, handler);
}

}  // namespace

int RunScreen(const FormScreen& screen, WINDOW* parent, KeyHandler handler,
              const std::function<bool()>& prepare) {
  TraceFormat("Enter %s", screen.operation);
  WindowPtr window = OpenWindow(LINES, COLS);
  if (!window) return -1;
  const bool complete = AllocScreenFields(screen.table) == 0;
  if (complete && (!prepare || prepare())) {
    RunForm(screen, window.get(), handler);
  }
  window.reset();
  FreeScreenFields(screen.table);
  if (!complete) return -1;
  noecho();  // whatever the screen did, keys are not to show on the next one
  ShowAgain(parent);
  TraceFormat("Exit %s", screen.operation);
  return 0;
}
