#include "support/desktop/PanelHost.h"

namespace orvantile::test {
namespace {

using Qt::StringLiterals::operator""_s;

constexpr auto xfceConfiguration = R"(<?xml version="1.0" encoding="UTF-8"?>
<channel name="xfce4-panel" version="1.0">
  <property name="configver" type="int" value="2"/>
  <property name="panels" type="array">
    <value type="int" value="1"/>
    <property name="panel-1" type="empty">
      <property name="position" type="string" value="p=8;x=640;y=780"/>
      <property name="length" type="uint" value="100"/>
      <property name="position-locked" type="bool" value="true"/>
      <property name="size" type="uint" value="32"/>
      <property name="plugin-ids" type="array">
        <value type="int" value="1"/>
      </property>
    </property>
  </property>
  <property name="plugins" type="empty">
    <property name="plugin-1" type="string" value="systray"/>
  </property>
</channel>
)";

constexpr auto lxqtConfiguration = R"(panels=panel1

[panel1]
plugins=statusnotifier
position=Bottom
panelSize=32
iconSize=22
lineCount=1
width=100
width-percent=true
alignment=0
animation-duration=0

[statusnotifier]
type=statusnotifier
)";

constexpr auto tint2Configuration = R"(panel_items = S
panel_size = 100% 32
panel_position = bottom center horizontal
panel_background_id = 1
systray_icon_size = 24
rounded = 0
border_width = 0
background_color = #202020 100
systray_padding = 4 4 4
)";

} // namespace

QString nameOf(PanelHost host) {
    switch (host) {
    case PanelHost::xfce:
        return u"xfce4-panel"_s;
    case PanelHost::lxqt:
        return u"lxqt-panel"_s;
    case PanelHost::tint2:
        return u"tint2"_s;
    }
    return {};
}

std::unique_ptr<ChildProcess> startPanel(PrivateSession& session, PanelHost host) {
    switch (host) {
    case PanelHost::xfce:
        session.writeFile(u".config/xfce4/xfconf/xfce-perchannel-xml/xfce4-panel.xml"_s, xfceConfiguration);
        break;
    case PanelHost::lxqt:
        session.writeFile(u".config/lxqt/panel.conf"_s, lxqtConfiguration);
        break;
    case PanelHost::tint2:
        session.writeFile(u".config/tint2/tint2rc"_s, tint2Configuration);
        break;
    }
    return session.start(nameOf(host));
}

} // namespace orvantile::test
