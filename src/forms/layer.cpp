#include "forms/layer.h"

#include "terminal/signals.h"
#include "terminal/terminal.h"

constinit Layer* Layer::bottom = nullptr;

Layer** Layer::LinkTo(const Layer* layer) {
  Layer** link = &bottom;
  while (*link != layer) {
    link = &(*link)->above_;
  }
  return link;
}

void FollowTerminal() {
  if (!TerminalChanged()) return;
  AwaitForeground();
  UpdateTerminalSize();
  for (Layer* layer = Layer::Bottom(); layer != nullptr; layer = layer->above()) {
    if (layer->LayOut()) {
      wnoutrefresh(layer->window());
    }
  }
  ResumeTerminal();
}
