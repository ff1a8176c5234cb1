// The ribbon markup.
#include "win/addin/ribbon_xml.h"

#include "base/runtime_text.h"

namespace addin_ribbon {
namespace {

constexpr const char* kComposeXml = R"(<customUI xmlns="http://schemas.microsoft.com/office/2009/07/customui">
  <ribbon>
    <tabs>
      <tab idMso="TabNewMailMessage">
        <group id="QorvaneComposeGroup" label="Qorvane" insertBeforeMso="GroupClipboard">
          <button id="QorvaneCompose" label="Qorvane" size="large" imageMso="SendStatusReport"
                  screentip="Qorvane" supertip="Send this mail later, once or on a recurrence."
                  onAction="Qorvane_OnAction"/>
        </group>
      </tab>
    </tabs>
  </ribbon>
</customUI>
)";

constexpr const char* kExplorerXml = R"(<customUI xmlns="http://schemas.microsoft.com/office/2009/07/customui">
  <ribbon>
    <tabs>
      <tab idMso="TabMail">
        <group id="QorvaneMainGroup" label="Qorvane">
          <button id="QorvaneOptions" label="Qorvane" size="large" imageMso="SendStatusReport"
                  screentip="Qorvane" supertip="Go to the deferred mails; there, edit the schedules of the selected ones."
                  onAction="QorvaneOptions_OnAction"/>
          <button id="QorvaneAbout" label="About Qorvane..." imageMso="Info" onAction="QorvaneAbout_OnAction"/>
        </group>
      </tab>
    </tabs>
  </ribbon>
</customUI>
)";

}  // namespace

std::string CustomUI(std::string_view ribbonId) {
  if (qorvane::EqualsIgnoringCase(ribbonId, kComposeRibbon)) return kComposeXml;
  if (qorvane::EqualsIgnoringCase(ribbonId, kExplorerRibbon)) return kExplorerXml;
  return {};
}

}  // namespace addin_ribbon
