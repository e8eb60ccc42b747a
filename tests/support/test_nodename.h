#pragma once

// The name that hlv_nodename gives in a test, "alpha" until the test sets another; null for none.
extern const char* test_node_name;
