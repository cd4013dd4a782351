/* SPDX-FileCopyrightText: The Orvane authors
   SPDX-License-Identifier: Apache-2.0 */
/* The platform's headers are C, each can be included by the path from /usr/include and by its name
   alone, and their values are the platform's: a compile-time test. */
#include <VirtualKey.h>
#include <app_context_manager.h>
#include <app_manager.h>
#include <app_manager_extension.h>
#include <aul.h>
#include <aul/aul.h>
#include <bundle.h>
#include <dlog.h>
#include <dlog/dlog.h>
#include <pkgmgr-info.h>
#include <privilege.h>
#include <screensaver.h>
#include <system/system_info.h>
#include <system_info.h>
#include <tizen.h>
#include <tzplatform_config.h>
#include <vconf.h>
#include <vconf/vconf.h>

_Static_assert(APP_STATE_TERMINATED == 4, "states");
_Static_assert(APP_MANAGER_ERROR_NO_SUCH_APP == -17891327, "-0x0110FFFF");
_Static_assert(APP_MANAGER_ERROR_DB_FAILED == -17891325, "base | 3");
_Static_assert(APP_MANAGER_ERROR_INVALID_PACKAGE == -17891324, "base | 4");
_Static_assert(APP_MANAGER_ERROR_APP_NO_RUNNING == -17891323, "base | 5");
_Static_assert(APP_MANAGER_ERROR_REQUEST_FAILED == -17891322, "base | 6");
_Static_assert(APP_MANAGER_ERROR_INVALID_PARAMETER == -22, "EINVAL");
_Static_assert(APP_MANAGER_ERROR_OUT_OF_MEMORY == -12, "ENOMEM");
_Static_assert(APP_MANAGER_ERROR_IO_ERROR == -5, "EIO");
_Static_assert(APP_MANAGER_ERROR_PERMISSION_DENIED == -13, "EACCES");
_Static_assert(APP_MANAGER_ERROR_NOT_SUPPORTED == -1073741822, "common code");
_Static_assert(SYSTEM_INFO_ERROR_NOT_SUPPORTED == -1073741822, "common code");
_Static_assert(AUL_R_EINVAL == -4 && AUL_R_ERROR == -1 && AUL_R_EREJECTED == -14, "results");
_Static_assert(AUL_R_EHIDDENFORGUEST == -11 && AUL_R_ENOAPP == -13, "-12 is not used");
_Static_assert(STATUS_DYING == 5 && STATUS_SERVICE == 8, "application status");
_Static_assert(PMINFO_R_EINVAL == -2 && PMINFO_R_ENOENT == -3, "results");
_Static_assert(VCONF_TYPE_STRING == 40 && VCONF_TYPE_DIR == 44, "types");
_Static_assert(LOG_ID_INVALID == -1 && LOG_ID_APPS == 3 && LOG_ID_MAX == 4, "logs");
_Static_assert(DLOG_DEBUG == 3 && DLOG_INFO == 4 && DLOG_ERROR == 6, "priorities");
_Static_assert(DLOG_FATAL == 7 && DLOG_SILENT == 8 && DLOG_PRIO_MAX == 9, "priorities");
_Static_assert(TZ_USER_APP == 61, "the application root");

typedef int (*screensaver_call)(void);
screensaver_call platform_headers_compile(void);
screensaver_call platform_headers_compile(void) { return screensaver_reset_timeout; }
