// The whole object model in one include.
#pragma once

#include "client/addins.h"
#include "client/application.h"
#include "client/command_bars.h"
#include "client/errors.h"
#include "client/folders.h"
#include "client/items.h"
#include "client/ref.h"
#include "client/safe_mail.h"
#include "client/sync_objects.h"
#include "client/windows.h"
