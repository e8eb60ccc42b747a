#include <cstdio>

#include "platform/hlv_nodename.h"

int main() {
  const char* name = hlv_nodename();
  return name != nullptr && std::puts(name) >= 0 ? 0 : 1;
}
