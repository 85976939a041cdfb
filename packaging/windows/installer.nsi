; Installs the program for the current user, without the rights of an administrator. build.sh calls it:
;
;   makensis -DVERSION=<x.y.z> -DFILES=<folder with the program> -DICON=<.ico> -DRESULT=<setup.exe> installer.nsi
Unicode true
Target amd64-unicode
!include MUI2.nsh

!define KEY "Software\Microsoft\Windows\CurrentVersion\Uninstall\Blockhouse"

Name "Blockhouse"
OutFile "${RESULT}"
RequestExecutionLevel user
InstallDir "$LOCALAPPDATA\Programs\Blockhouse"
InstallDirRegKey HKCU "${KEY}" "InstallLocation"
SetCompressor /SOLID lzma

VIProductVersion "${VERSION}.0"
VIAddVersionKey "ProductName" "Blockhouse"
VIAddVersionKey "CompanyName" "The Blockhouse developers"
VIAddVersionKey "FileDescription" "Installs Blockhouse"
VIAddVersionKey "FileVersion" "${VERSION}"
VIAddVersionKey "LegalCopyright" "Copyright the Blockhouse developers, GPL 3 or later"

!define MUI_ICON "${ICON}"
!define MUI_UNICON "${ICON}"
!define MUI_FINISHPAGE_RUN "$INSTDIR\blockhouse.exe"
!insertmacro MUI_PAGE_LICENSE "${FILES}\LICENSE.txt"
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
!insertmacro MUI_PAGE_FINISH
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES
!insertmacro MUI_LANGUAGE "English"

Section
  SetOutPath "$INSTDIR"
  File "${FILES}\blockhouse.exe"
  File "${FILES}\LICENSE.txt"
  File "${FILES}\SOURCES.txt"
  File /r "${FILES}\docs"
  File /r "${FILES}\examples"
  WriteUninstaller "$INSTDIR\uninstall.exe"
  CreateShortcut "$SMPROGRAMS\Blockhouse.lnk" "$INSTDIR\blockhouse.exe"

  WriteRegStr HKCU "${KEY}" "DisplayName" "Blockhouse"
  WriteRegStr HKCU "${KEY}" "DisplayVersion" "${VERSION}"
  WriteRegStr HKCU "${KEY}" "DisplayIcon" "$INSTDIR\blockhouse.exe"
  WriteRegStr HKCU "${KEY}" "Publisher" "The Blockhouse developers"
  WriteRegStr HKCU "${KEY}" "InstallLocation" "$INSTDIR"
  WriteRegStr HKCU "${KEY}" "UninstallString" '"$INSTDIR\uninstall.exe"'
  WriteRegStr HKCU "${KEY}" "QuietUninstallString" '"$INSTDIR\uninstall.exe" /S'
  WriteRegDWORD HKCU "${KEY}" "NoModify" 1
  WriteRegDWORD HKCU "${KEY}" "NoRepair" 1
SectionEnd

; Only what was installed: the user's lists are elsewhere, and what else lies in the folder is not ours.
Section "Uninstall"
  Delete "$INSTDIR\blockhouse.exe"
  Delete "$INSTDIR\LICENSE.txt"
  Delete "$INSTDIR\SOURCES.txt"
  Delete "$INSTDIR\uninstall.exe"
  RMDir /r "$INSTDIR\docs"
  RMDir /r "$INSTDIR\examples"
  RMDir "$INSTDIR"
  Delete "$SMPROGRAMS\Blockhouse.lnk"
  DeleteRegKey HKCU "${KEY}"
SectionEnd
