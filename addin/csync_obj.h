// CSyncObj: starts the client's Send/Receive after a scheduler pass has put
// mail into the Outbox, and in send-and-exit mode watches the run so that the
// client is closed only after the mail has left.
//
// SendNow(bExit) takes the path the client's generation needs: on version 9
// the Send/Receive command (control 5577, else 5488) of the active main
// window, or Alt+F5; on later versions the first Send/Receive group, or
// Alt+F9 when there is none. Only a run started with bExit on a later
// version is watched: HasObject is true until its SyncEnd, which raises this
// object's own SyncEnd to its listener. Releasing the object drops a watched
// run without raising anything.
//
// Lifecycle: created and held by Connect (OnConnection to CloseHandlers);
// reaches the client through g_Connect->m_app(). Its event handlers keep it
// alive while they run, so a listener may release it from SyncEnd. UI
// thread only; every entry traps its own errors.
#pragma once

#include <memory>
#include <string>

#include "addin/with_events.h"
#include "client/sync_objects.h"

class CSyncObjEvents {
 public:
  virtual ~CSyncObjEvents() = default;
  virtual void SyncEnd() = 0;
};

class CSyncObj final : public client::SyncObjectEvents, public std::enable_shared_from_this<CSyncObj> {
 public:
  // The listener hears SyncEnd; null for nobody. It must outlive its listening.
  void SetListener(CSyncObjEvents* listener) noexcept { listener_ = listener; }

  bool HasObject() const noexcept { return static_cast<bool>(m_sync); }
  void SendNow(bool bExit);

  // The events of the watched group (client::SyncObjectEvents).
  void SyncStart() override { m_sync_SyncStart(); }
  void Progress(long state, const std::string& description, long value, long max) override {
    m_sync_Progress(state, description, value, max);
  }
  void OnError(long code, const std::string& description) override { m_sync_OnError(code, description); }
  void SyncEnd() override { m_sync_SyncEnd(); }

 private:
  void m_sync_SyncStart();
  void m_sync_Progress(long state, const std::string& description, long value, long max);
  void m_sync_OnError(long code, const std::string& description);
  void m_sync_SyncEnd();

  WithEvents<client::SyncObject, client::SyncObjectEvents> m_sync{this};
  CSyncObjEvents* listener_ = nullptr;
};
