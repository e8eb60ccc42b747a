#include "support/test_nodename.h"

#include "platform/hlv_nodename.h"

const char* test_node_name = "alpha";
const char* hlv_nodename() { return test_node_name; }
