// <os/log.h>: the unified log.
#pragma once

#include <os/availability.h>
#include <os/object.h>

OS_OBJECT_DECL_CLASS(os_log);

extern "C" {

API_AVAILABLE(macos(10.12))
__attribute__((ns_returns_retained))
os_log_t os_log_create(const char *subsystem, const char *category);

// Stand-in for the private function that the SDK's os_log_error macro
// reaches; it carries the same os_log format checking.
void tolvane_stub_os_log_error(os_log_t log, const char *format, ...) __attribute__((format(os_log, 2, 3)));

}

// In the SDK, os_log_error(log, format, ...) is a macro that formats with the
// compiler's os_log builtin; the format must be a string literal. The stand-in
// keeps that call shape and the literal requirement ("" format).
#define os_log_error(log, format, ...) tolvane_stub_os_log_error(log, "" format, ##__VA_ARGS__)
