; Installs Skyhop for the current user, without administrator rights.
; Definitions: VERSION; SOURCE, the folder with the files; REMOVALS, a file with the commands that
; remove them; OUTPUT, the name of the installer.
Target ${TARGET}
Unicode true
Name "Skyhop"
OutFile "${OUTPUT}"
SetCompressor /SOLID lzma
RequestExecutionLevel user
ManifestDPIAware true
XPStyle on
ShowInstDetails nevershow
ShowUninstDetails nevershow
BrandingText "Skyhop ${VERSION}"
Icon "${ICON}"
UninstallIcon "${ICON}"

VIProductVersion "${VERSION}.0"
VIAddVersionKey "ProductName" "Skyhop"
VIAddVersionKey "CompanyName" "Marlo"
VIAddVersionKey "FileDescription" "Skyhop: installation"
VIAddVersionKey "FileVersion" "${VERSION}"
VIAddVersionKey "ProductVersion" "${VERSION}"
VIAddVersionKey "LegalCopyright" "MIT licence"

!define UNINSTALL_KEY "Software\Microsoft\Windows\CurrentVersion\Uninstall\Skyhop"

InstallDir "$LOCALAPPDATA\Programs\Skyhop"
; An upgrade uses the folder of the installed program.
InstallDirRegKey HKCU "${UNINSTALL_KEY}" "InstallLocation"

Page directory
Page instfiles
UninstPage components
UninstPage instfiles

; Windows cannot replace a running program, and a half-replaced program is worse than none.
!macro CheckThatItDoesNotRun
  check:
  IfFileExists "$INSTDIR\skyhop.exe" 0 free
  ClearErrors
  FileOpen $0 "$INSTDIR\skyhop.exe" a
  IfErrors 0 close
  MessageBox MB_RETRYCANCEL|MB_ICONEXCLAMATION \
    "Skyhop is running. Close it, then press Retry." /SD IDCANCEL IDRETRY check
  SetErrorLevel 2
  Quit
  close:
  FileClose $0
  free:
!macroend

Section "Skyhop"
  !insertmacro CheckThatItDoesNotRun
  SetOutPath "$INSTDIR"
  ; Install only the program's own files; keep the user's files in the folder.
  File /r "${SOURCE}\*"
  WriteUninstaller "$INSTDIR\uninstall.exe"
  CreateShortcut "$SMPROGRAMS\Skyhop.lnk" "$INSTDIR\skyhop.exe"
  WriteRegStr HKCU "${UNINSTALL_KEY}" "DisplayName" "Skyhop"
  WriteRegStr HKCU "${UNINSTALL_KEY}" "DisplayVersion" "${VERSION}"
  WriteRegStr HKCU "${UNINSTALL_KEY}" "DisplayIcon" "$INSTDIR\skyhop.exe"
  WriteRegStr HKCU "${UNINSTALL_KEY}" "Publisher" "Marlo"
  WriteRegStr HKCU "${UNINSTALL_KEY}" "InstallLocation" "$INSTDIR"
  WriteRegStr HKCU "${UNINSTALL_KEY}" "UninstallString" '"$INSTDIR\uninstall.exe"'
  WriteRegStr HKCU "${UNINSTALL_KEY}" "QuietUninstallString" '"$INSTDIR\uninstall.exe" /S'
  SectionGetSize 0 $0
  WriteRegDWORD HKCU "${UNINSTALL_KEY}" "EstimatedSize" $0
  WriteRegDWORD HKCU "${UNINSTALL_KEY}" "NoModify" 1
  WriteRegDWORD HKCU "${UNINSTALL_KEY}" "NoRepair" 1
SectionEnd

Section "un.Skyhop"
  SectionIn RO
  !insertmacro CheckThatItDoesNotRun
  !include "${REMOVALS}"
  Delete "$INSTDIR\uninstall.exe"
  Delete "$SMPROGRAMS\Skyhop.lnk"
  DeleteRegKey HKCU "${UNINSTALL_KEY}"
  ; This removes the folder only if it is empty.
  RMDir "$INSTDIR"
SectionEnd

; These two sections run only if the user ticks them.
Section /o "un.My engines, band definitions, beacons and logs"
  RMDir /r "$INSTDIR\IonCap"
  RMDir /r "$INSTDIR\ITSHFBC"
  RMDir /r "$INSTDIR\ITSHFBC2"
  Delete "$INSTDIR\BeaconLocation.txt"
  Delete "$INSTDIR\BeaconSchedule.txt"
  Delete "$INSTDIR\CustomBeaconSchedule.txt"
  Delete "$INSTDIR\BeaconHeard.csv"
  Delete "$INSTDIR\DefaultBands.txt"
  Delete "$INSTDIR\Bands.txt"
  Delete "$INSTDIR\ErrorLog.txt"
  Delete "$INSTDIR\ErrorLog.old.txt"
  Delete "$INSTDIR\installed-files.txt"
  RMDir "$INSTDIR"
SectionEnd

Section /o "un.My settings"
  DeleteRegKey HKCU "Software\Marlo\Skyhop"
  DeleteRegKey /ifempty HKCU "Software\Marlo"
SectionEnd
