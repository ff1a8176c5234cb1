// Subscribing the add-in's event handlers to a client object's connection
// point: one overload per event interface. The subscription unadvises when
// released; raises 91 for a null handler.
#pragma once

#include <windows.h>
#include <oaidl.h>

#include "client/client.h"

namespace binding {

client::Ref<client::EventSubscription> Advise(IDispatch* source, client::ApplicationEvents* handler);
client::Ref<client::EventSubscription> Advise(IDispatch* source, client::ExplorersEvents* handler);
client::Ref<client::EventSubscription> Advise(IDispatch* source, client::ExplorerEvents* handler);
client::Ref<client::EventSubscription> Advise(IDispatch* source, client::InspectorsEvents* handler);
client::Ref<client::EventSubscription> Advise(IDispatch* source, client::SyncObjectEvents* handler);
client::Ref<client::EventSubscription> Advise(IDispatch* source, client::CommandBarButtonEvents* handler);

}  // namespace binding
