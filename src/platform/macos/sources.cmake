# The files of the macOS layer that speak to AppKit and Foundation, below src/platform/macos. The tests run the same
# list against doubles.
set(ORVANTILE_MACOS_OBJCXX_SOURCES
  application/AppDelegate.mm
  application/ApplicationImages.mm
  application/MacActivation.mm
  application/MacApplication.mm
  cocoa/Picture.mm
  desktop/MacAppearance.mm
  desktop/MacDefaults.mm
  desktop/MacScheduler.mm
  desktop/MacScreens.mm
  desktop/MacSounds.mm
  desktop/MacWorkspace.mm
  panel/BlurView.mm
  panel/HostView.mm
  panel/MacPanel.mm
  panel/MacPanels.mm
  panel/PictureView.mm
  statusitem/MacStatusBar.mm
  statusitem/MacStatusItem.mm
  statusitem/StatusMenu.mm
  statusitem/SymbolImages.mm
  updates/MacUpdater.mm)
set(ORVANTILE_MACOS_CXX_SOURCES
  application/MacLaunch.cpp
  panel/Entrance.cpp
  panel/ScaleAt.cpp)
