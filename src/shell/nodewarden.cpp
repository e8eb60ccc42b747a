// nodewarden: maintains the node security configuration of the local node at a terminal.

#include <curses.h>
#include <unistd.h>

#include "forms/forms.h"
#include "forms/window.h"
#include "platform/shell_command.h"
#include "shell/command_line.h"
#include "shell/main_menu.h"
#include "shell/shell_state.h"
#include "shell/shutdown.h"
#include "shell/trace_log.h"
#include "terminal/signals.h"
#include "terminal/terminal.h"

int main(int argc, char** argv) {
  BlockSignals();
  InstallHandlers(Shutdown);
  AwaitForeground();
  RunShellCommand("clear");
  ParseArgs(argc, argv);
  StartTerminal();
  const auto user = static_cast<int>(geteuid());
  if (user != 0) {
    RootAuthority = 0;
  }
  TraceFormat("geteuid: %d", user);
  Frame(stdscr);
  PaintMenu(stdscr, MainMenu, kMenuTitle);
  MenuLayer menu;
  if (RootAuthority == 0) {
    MessageBox(stdscr, "Read Only authority granted to non-root users.", MBOX_OK);
  }
  menu.Run();
}
