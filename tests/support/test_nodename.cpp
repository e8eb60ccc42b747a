#include "platform/hlv_nodename.h"

extern const char* test_node_name;  // "alpha" until a test sets another; null for none
const char* test_node_name = "alpha";
const char* hlv_nodename() { return test_node_name; }
