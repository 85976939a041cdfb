; Installs the program for the current user, without the rights of an administrator. build.sh calls it:
;
;   makensis -DVERSION=<x.y.z> -DFILES=<folder with the program> -DICON=<.ico> -DRESULT=<setup.exe> installer.nsi
Unicode true
Target amd64-unicode
!include LogicLib.nsh
!include MUI2.nsh

!define KEY "Software\Microsoft\Windows\CurrentVersion\Uninstall\Blockhouse"

Name "Blockhouse"
OutFile "${RESULT}"
RequestExecutionLevel user
InstallDir "$LOCALAPPDATA\Programs\Blockhouse"
InstallDirRegKey HKCU "${KEY}" "InstallLocation"
SetCompressor /SOLID lzma
ManifestDPIAware true
; A file that cannot be written is no file to go on without.
AllowSkipFiles off

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

; A running program cannot be replaced or removed, and half a program is worse than none.
!macro StopWhileItRuns
  ${If} ${FileExists} "$INSTDIR\blockhouse.exe"
    ${Do}
      ClearErrors
      FileOpen $0 "$INSTDIR\blockhouse.exe" a
      ${IfNot} ${Errors}
        FileClose $0
        ${Break}
      ${EndIf}
      ${If} ${Cmd} 'MessageBox MB_RETRYCANCEL|MB_ICONEXCLAMATION "Blockhouse is running. Close it, then go on." /SD IDCANCEL IDCANCEL'
        SetErrorLevel 2
        Quit
      ${EndIf}
    ${Loop}
  ${EndIf}
!macroend

Section
  !insertmacro StopWhileItRuns
  SetOutPath "$INSTDIR"
  File "${FILES}\blockhouse.exe"
  File "${FILES}\LICENSE.txt"
  File "${FILES}\SOURCES.txt"
  File /r "${FILES}\docs"
  File /r "${FILES}\licences"
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
  !insertmacro StopWhileItRuns
  Delete "$INSTDIR\blockhouse.exe"
  Delete "$INSTDIR\LICENSE.txt"
  Delete "$INSTDIR\SOURCES.txt"
  Delete "$INSTDIR\uninstall.exe"
  Delete "$INSTDIR\docs\images\*.png"
  Delete "$INSTDIR\docs\user-guide.md"
  Delete "$INSTDIR\docs\reliability.md"
  Delete "$INSTDIR\licences\*.txt"
  RMDir "$INSTDIR\docs\images"
  RMDir "$INSTDIR\docs"
  RMDir "$INSTDIR\licences"
  RMDir "$INSTDIR"
  Delete "$SMPROGRAMS\Blockhouse.lnk"
  DeleteRegKey HKCU "${KEY}"
SectionEnd
