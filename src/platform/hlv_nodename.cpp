#include "platform/hlv_nodename.h"

#include <sys/utsname.h>

const char* hlv_nodename() {
  static utsname host;
  return uname(&host) == 0 ? host.nodename : nullptr;
}
