; Installs for the current user, without asking for an administrator. `pack` gives VERSION, FOLDER, OUTPUT, ICON and
; REMOVE, the lines that delete what was installed.
Target amd64-unicode
!include MUI2.nsh
!include FileFunc.nsh

!define UNINSTALL "Software\Microsoft\Windows\CurrentVersion\Uninstall\ShockScope"
!define CLASS "ShockScope.Recording"

Name "ShockScope ${VERSION}"
OutFile "${OUTPUT}"
InstallDir "$LOCALAPPDATA\Programs\ShockScope"
InstallDirRegKey HKCU "${UNINSTALL}" "InstallLocation"
RequestExecutionLevel user
SetCompressor /SOLID lzma
ManifestDPIAware true

!define MUI_ICON "${ICON}"
!define MUI_UNICON "${ICON}"
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
!define MUI_FINISHPAGE_RUN "$INSTDIR\ShockScope.exe"
!insertmacro MUI_PAGE_FINISH
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES
!insertmacro MUI_LANGUAGE "English"

Section
  SetOutPath "$INSTDIR"
  File /r "${FOLDER}\*"
  CreateShortcut "$SMPROGRAMS\ShockScope.lnk" "$INSTDIR\ShockScope.exe"

  ; Another program that opens recordings stays the one that does; this one joins the list.
  ReadRegStr $0 HKCU "Software\Classes\.kshock" ""
  StrCmp $0 "" 0 +2
  WriteRegStr HKCU "Software\Classes\.kshock" "" "${CLASS}"
  WriteRegStr HKCU "Software\Classes\.kshock\OpenWithProgids" "${CLASS}" ""
  WriteRegStr HKCU "Software\Classes\${CLASS}" "" "Shock recording"
  WriteRegStr HKCU "Software\Classes\${CLASS}\DefaultIcon" "" "$INSTDIR\ShockScope.exe,0"
  WriteRegStr HKCU "Software\Classes\${CLASS}\shell\open\command" "" '"$INSTDIR\ShockScope.exe" "%1"'
  System::Call 'shell32::SHChangeNotify(i 0x08000000, i 0, p 0, p 0)'

  WriteUninstaller "$INSTDIR\Uninstall.exe"
  WriteRegStr HKCU "${UNINSTALL}" "DisplayName" "ShockScope"
  WriteRegStr HKCU "${UNINSTALL}" "DisplayVersion" "${VERSION}"
  WriteRegStr HKCU "${UNINSTALL}" "DisplayIcon" "$INSTDIR\ShockScope.exe"
  WriteRegStr HKCU "${UNINSTALL}" "InstallLocation" "$INSTDIR"
  WriteRegStr HKCU "${UNINSTALL}" "UninstallString" '"$INSTDIR\Uninstall.exe"'
  WriteRegStr HKCU "${UNINSTALL}" "QuietUninstallString" '"$INSTDIR\Uninstall.exe" /S'
  ${GetSize} "$INSTDIR" "/S=0K" $0 $1 $2
  WriteRegDWORD HKCU "${UNINSTALL}" "EstimatedSize" $0
  WriteRegDWORD HKCU "${UNINSTALL}" "NoModify" 1
  WriteRegDWORD HKCU "${UNINSTALL}" "NoRepair" 1
SectionEnd

; What was installed is removed by name: the user may have chosen a folder that holds other files.
Section "Uninstall"
  !include "${REMOVE}"
  Delete "$INSTDIR\Uninstall.exe"
  RMDir "$INSTDIR"
  Delete "$SMPROGRAMS\ShockScope.lnk"
  ReadRegStr $0 HKCU "Software\Classes\.kshock" ""
  StrCmp $0 "${CLASS}" 0 +2
  DeleteRegValue HKCU "Software\Classes\.kshock" ""
  DeleteRegValue HKCU "Software\Classes\.kshock\OpenWithProgids" "${CLASS}"
  DeleteRegKey /ifempty HKCU "Software\Classes\.kshock\OpenWithProgids"
  DeleteRegKey /ifempty HKCU "Software\Classes\.kshock"
  DeleteRegKey HKCU "Software\Classes\${CLASS}"
  DeleteRegKey HKCU "${UNINSTALL}"
  System::Call 'shell32::SHChangeNotify(i 0x08000000, i 0, p 0, p 0)'
SectionEnd
