// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

// How this library writes to the platform's log, and what it does when an assertion fails.
//
// Every line goes to the log service's main log with a priority, a tag and a text of two parts:
//
//   <file>: <function>(<line>) > <message>
//
// The part before the message is made by the macros below from the place of the call; callers write
// the message alone, as a printf format and its arguments:
//
//   LoggerI("App State : %d", state);
//     AppUtil.cc: GetAppState(112) > App State : 1
//
// A line has one of three priorities:
//
//   debug (3)  the course of a call: entries, exits, raw values
//   info (4)   what a call came to
//   error (6)  failures, and the few successes that field tools pick out by this priority
//
// and one of two tags:
//
//   "QM_WEBAPI"       the library's own modules: everything in src/orvane/
//   "WEBAPI_PLUGINS"  what every web API library carries: the glue, scopes and assertions
//
// On a set the lines are read with `dlogutil -v threadtime QM_WEBAPI:D WEBAPI_PLUGINS:D '*:S'`, on
// a desk with `orvane exec --log debug`. A page that asks which application has the focus, and is
// closed, leaves these:
//
//   D/WEBAPI_PLUGINS: logger.h: ScopeLogger > XW_Extension.cc: OnInstanceCreated(48) > Enter
//   D/WEBAPI_PLUGINS: logger.h: ~ScopeLogger(288) > XW_Extension.cc: OnInstanceCreated > Exit
//   E/QM_WEBAPI: orvane_instance.cc: getForegroundAppId(118) > appID is [OrvaneTour.Main]
//   D/QM_WEBAPI: orvane_instance.cc: ~OrvaneInstance(79) > Entered ~OrvaneInstance, Params: None
//
// Lines of fixed place
//
// Field tools of the platform match the following lines by their whole text, the number included.
// The files are laid out so that __LINE__ is that number, and the tests named LogLines hold each
// one. A change above such a line makes up, within its file, for the lines that it adds or takes;
// moving one is a change of interface.
//
//   XW_Extension.cc     21  GetCurrentExtension  assert(g_extension)
//   XW_Extension.cc     37  XW_Initialize        entry of the scope
//   XW_Extension.cc     40  XW_Initialize        Can't initialize extension: …
//   XW_Extension.cc     43  XW_Initialize        … Created Extension - …
//   XW_Extension.cc     48  OnInstanceCreated    entry of the scope
//   XW_Extension.cc     60  OnShutdown           entry of the scope
//   XW_Extension.cc     61  OnShutdown           … Delete extension - …
//   logger.h           288  ~ScopeLogger         exit of any scope
//   orvane_instance.cc  79  ~OrvaneInstance      Entered ~OrvaneInstance, Params: None
//   orvane_instance.cc  85  getVersion           Version of plugin: …
//   orvane_instance.cc 103  getUuid              UUID is […]
//   orvane_instance.cc 109  getUuid              UUID is not generated
//   orvane_instance.cc 118  getForegroundAppId   appID is […]
//   orvane_instance.cc 123  getForegroundAppId   appID is null
//   orvane_instance.cc 132  setEpopAppWindow     get ud_panel_supported value failed
//   orvane_instance.cc 215  getIMEResolution     Failed to get ime resolution
//
// Error lines, and where to look
//
//   getpid failed, aul_app_get_appid_bypid failed
//       The process was not started by the set's launcher, or the launcher's daemon does not
//       answer.
//   getAppID failed, Getting of AppID failed, Failed to get appid
//       Follows one of the two above; the page gets an error.
//   app_manager/context failed
//       No application has the focus, or the window manager does not answer.
//   Failed to get app context, Failed to get app state
//       The application that the page names does not run.
//   pkgmgrinfo_appinfo_get_appinfo failed
//       The calling application is not installed for the user of the process.
//   pkgmgrinfo_appinfo_get_metadata_value failed
//       The application's config.xml has no <tizen:metadata> with the key: mostly harmless.
//   uuid fopen failed, uuid fwrite failed, stat failed
//       The data folder of the application is missing, full or not writable; errno is in the line.
//   uuid fread suceess, uuid fwrite suceess, uuid newly generated, APPID: …
//       Successes; field tools pick them out by the priority.
//   Failed to get ime resolution, get ud_panel_supported value failed
//       The set's model configuration lacks the feature key.
//   Failed to open […], Failed to collect memory consumption.
//       A driver's or the kernel's statistics file is missing or not readable for the process;
//       the page gets an error.
//   Failed to execute command: …, Failed to get result from command: …
//       No shell, no memory for a child, or no top, grep or awk on the search path.
//   Failed to retrieve number of CPUs., Cpu count …, Failed to get number of CPU core.
//       /proc/cpuinfo is not readable, or it names no processor or more than are counted.
//   Failed to get CPU usage., There was a problem encountered while getting CPU Usage, …
//       top printed no number, or one below the number of processors; the latter is harmless.
//   Fail to activate screensaver, Failed to start timer. …, Failed to stop timer. …
//       The screen saver's service refused twice; the two others tell that the state was as asked.
//   Fail to RecordProfiling
//       The settings service refused the profiling key; the info line before it names the key.
//   assert(…)
//       The runtime or the script broke its contract; the process ends with this line.
//
// Odd lines that stay as they are
//
//   "suceess", "vonf"          field tools search for these spellings
//   "UUID is not generated"    the page gets "Invalid Choice" for the same failure
//   "Fail to activate …"       writes "screensaver" here and "ScreenSaver" to the page
//   "… greater than max …"     is logged for a count that equals the limit as well
//   "… Created Extension - …"  a success at error priority, as "Delete extension" and "appID is"
//   "added = [%f][%s]"         likewise; profiling tools read the labels from it
//
// Adding a line
//
// Choose the priority by who needs the line: debug for the developer of this library, info for the
// developer of the page, error for whoever keeps the set running. Begin with what happened, put
// each value in brackets, and give the cause (errno, a code) where there is one. One event, one
// line, at the place that knows the cause; a caller that only passes a failure on logs nothing. A
// secret that a page holds (a typed word, a token in a label) is not logged by new lines. Lines end
// without a full stop and are plain ASCII, for the tools that cut them by column.
//
// The same holds for the framework's own lines, which share the tag of the glue: a reader tells
// them apart by the file name alone, so that no two files of the library and the framework share a
// name.
//
// Threads and failures
//
// Every macro may be used from any thread; the service writes each line in one piece. Nothing here
// takes a lock of its own, allocates (but for the two names that a scope keeps) or fails in a way
// that a caller could see: what the log service answers is ignored. A log call that throws ends the
// process only when it is made at the end of a scope, since a destructor may not throw.
//
// Formats
//
// The service cuts a text at 4076 bytes. Nobody checks a format against its arguments: the
// service's function carries no format attribute on a set. Arguments must be of the very types that
// the format names: `const char*` for %s and never std::string, `long` for %ld, any pointer for %p.

#include <assert.h>

#include <string>

#include <dlog.h>

namespace common {

// ---- Tags ---------------------------------------------------------------------------------------

// The library's own modules.
constexpr const char* kModuleTag = "QM_WEBAPI";

// What every web API library carries.
constexpr const char* kPluginsTag = "WEBAPI_PLUGINS";

// ---- File names ---------------------------------------------------------------------------------

// The last part of `path`, which is never null: a line names "AppUtil.cc", wherever the build was.
// It points into `path` and lives as long.
constexpr const char* BaseName(const char* path) {
  const char* name = path;
  for (const char* position = path; *position != '\0'; ++position) {
    if (*position == '/') {
      name = position + 1;
    }
  }
  return name;
}

// The name of the source file in which it stands, found by the compiler and not at run time: the
// whole path, which would tell where the build was, does not get into the library.
#define LOG_FILE_NAME                                           \
  ([]() -> const char* {                                        \
    constexpr const char* kName = ::common::BaseName(__FILE__); \
    return kName;                                               \
  }())

// ---- Lines --------------------------------------------------------------------------------------

// Writes one line. `format` begins with the three placeholders of the place, which `file`,
// `function` and `line` fill; the macros below see to that. Texts are read before it returns.
template <class... Arguments>
void LogAt(log_priority priority, const char* tag, const char* file, const char* function, int line,
           const char* format, Arguments... arguments) {
  __dlog_print(LOG_ID_MAIN, priority, tag, format, file, function, line, arguments...);
}

// Never runs: the macros below name it in a place that is not evaluated, so that the compiler
// checks the formats of all lines. `format` is the message's, without the place.
__attribute__((format(printf, 1, 2))) inline int CheckFormat(const char* /*format*/, ...) {
  return 0;
}

// The common part of the macros below. The first of the variable arguments is the message's format,
// a string literal: the compiler joins it to the place's.
#define LOG_AT(priority, tag, ...)                                \
  (static_cast<void>(sizeof(::common::CheckFormat(__VA_ARGS__))), \
   ::common::LogAt(priority, tag, LOG_FILE_NAME, __func__, __LINE__, "%s: %s(%d) > " __VA_ARGS__))

// LoggerD(format, arguments…): a debug line of one of the library's modules.
#define LoggerD(...) LOG_AT(DLOG_DEBUG, ::common::kModuleTag, __VA_ARGS__)

// LoggerI(format, arguments…): an info line of one of the library's modules.
#define LoggerI(...) LOG_AT(DLOG_INFO, ::common::kModuleTag, __VA_ARGS__)

// LoggerE(format, arguments…): an error line of one of the library's modules. It also serves for
// the successes that are named above.
#define LoggerE(...) LOG_AT(DLOG_ERROR, ::common::kModuleTag, __VA_ARGS__)

// PluginLoggerE(format, arguments…): an error line of what every web API library carries.
#define PluginLoggerE(...) LOG_AT(DLOG_ERROR, ::common::kPluginsTag, __VA_ARGS__)

// ---- Assertions ---------------------------------------------------------------------------------

// Logs "assert(<expression>)<text>" for the given place and ends the process as a failed assertion
// of the C library does: with `condition` on the standard error output, and SIGABRT.
//
// The line and the C library's message show different things on purpose: the line the expression as
// the source has it, the message the condition that was tested.
[[noreturn]] inline void FailAssertion(const char* file, const char* function, int line,
                                       const char* expression, const char* text,
                                       const char* condition) {
  LogAt(DLOG_ERROR, kPluginsTag, file, function, line, "%s: %s(%d) > assert(%s)%s", expression,
        text);
  __assert_fail(condition, file, static_cast<unsigned>(line), function);
}

// LOG_ASSERT_MSG(expression, text): ends the process unless `expression` holds. A literal `text`.
//
// It holds in every build, whatever NDEBUG says. What is asserted in this library is a contract
// with the runtime or with the script: an instance without its extension, a message that the script
// cannot have sent. Once that is broken, any answer could be one page's secret given to another.
#define LOG_ASSERT_MSG(expression, text)                                            \
  do {                                                                              \
    if (!(expression)) {                                                            \
      ::common::FailAssertion(LOG_FILE_NAME, __func__, __LINE__, #expression, text, \
                              "!!(" #expression ") && \"" text "\"");               \
    }                                                                               \
  } while (false)

// LOG_ASSERT(expression): the same with an empty text. The JSON library's own assertions come here
// (see common/json.h), with its header as the file and its member as the function.
#define LOG_ASSERT(expression) LOG_ASSERT_MSG(expression, "")

// ---- Scopes -------------------------------------------------------------------------------------

// Logs, at debug priority, that a scope is entered and, when it ends, that it is left, be it by a
// return or by an exception:
//
//   logger.h: ScopeLogger > task-queue.h: Queue(45) > Enter
//   logger.h: ~ScopeLogger(288) > task-queue.h: Queue > Exit
//
// The exit carries this header's place and not the scope's: the two names that the object keeps
// tell which scope it was. Objects live on the stack of their scope (see LOG_SCOPE), are used by
// the thread that made them, and are never copied or moved.
class ScopeLogger {
 public:
  // The names are copied: the scope may unload what they belong to. std::bad_alloc when there is no
  // memory for them, and then nothing is logged.
  ScopeLogger(const char* file, const char* function, int line);

  // Does not throw: a log call that does ends the process here. Nothing is to be undone in it, so
  // it is safe on the way of an exception.
  ~ScopeLogger();

  ScopeLogger(const ScopeLogger&) = delete;
  ScopeLogger& operator=(const ScopeLogger&) = delete;
  ScopeLogger(ScopeLogger&&) = delete;
  ScopeLogger& operator=(ScopeLogger&&) = delete;

 private:
  // Fixed after construction; the file first.
  const std::string file_;
  const std::string function_;
};

// Logs the entry into the scope in which it stands and, at the scope's end, the exit from it. It is
// the first statement of a function, so that everything that the function logs stands between:
//
//   void Extension::Detail::OnShutdown(XW_Extension /*extension*/) {
//     LOG_SCOPE();
//     …
#define LOG_SCOPE() const ::common::ScopeLogger log_scope(LOG_FILE_NAME, __func__, __LINE__)

inline ScopeLogger::ScopeLogger(const char* file, const char* function, int line)
    : file_(file), function_(function) {
  // The blank behind the last word is part of the line.
  __dlog_print(LOG_ID_MAIN, DLOG_DEBUG, kPluginsTag, "logger.h: ScopeLogger > %s: %s(%d) > Enter ",
               file, function, line);
}

inline ScopeLogger::~ScopeLogger() {
  // A line of fixed place: what a change adds to this header above it, or takes from it, is made up
  // for above it too.
  LOG_AT(DLOG_DEBUG, ::common::kPluginsTag, "%s: %s > Exit", file_.c_str(), function_.c_str());
}

}  // namespace common
