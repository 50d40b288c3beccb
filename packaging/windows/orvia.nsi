; The installer for 64-bit Windows.
;
;   makensis -DVERSION=1.0.0 -DSTAGE=folder -DLISTS=folder -DICON=file -DOUT=file orvia.nsi
;
; STAGE holds what is installed; in LISTS lie install.nsh and uninstall.nsh, which name each file of it
; (stage.py writes them). Nothing that is not named is taken away again: tables, records and whatever else
; an operator put beside the program stay.
;
; /S installs without a word, /CurrentUser and /AllUsers choose for whom, /D=folder (last, unquoted)
; where. Exit status 0: installed; 1: cancelled; 2: failed; 3: refused, because the console runs.
Unicode true
Target amd64-unicode
ManifestDPIAware true
SetCompressor /SOLID lzma
SetCompressorDictSize 32

!define UNINSTALL "Software\Microsoft\Windows\CurrentVersion\Uninstall\Orvia"
!define RUNS 3

!define MULTIUSER_EXECUTIONLEVEL Highest
!define MULTIUSER_MUI
!define MULTIUSER_INSTALLMODE_COMMANDLINE
!define MULTIUSER_USE_PROGRAMFILES64
!define MULTIUSER_INSTALLMODE_INSTDIR "Orvia"
!define MULTIUSER_INSTALLMODE_DEFAULT_CURRENTUSER
!define MULTIUSER_INSTALLMODE_DEFAULT_REGISTRY_KEY "${UNINSTALL}"
!define MULTIUSER_INSTALLMODE_DEFAULT_REGISTRY_VALUENAME "InstallLocation"
!define MULTIUSER_INSTALLMODE_INSTDIR_REGISTRY_KEY "${UNINSTALL}"
!define MULTIUSER_INSTALLMODE_INSTDIR_REGISTRY_VALUENAME "InstallLocation"
!include MultiUser.nsh
!include MUI2.nsh
!include LogicLib.nsh
!include FileFunc.nsh

Name "Orvia"
OutFile "${OUT}"
BrandingText "Orvia ${VERSION}"
VIProductVersion "${VERSION}.0"
VIAddVersionKey "ProductName" "Orvia"
VIAddVersionKey "CompanyName" "Orvia maintainers"
VIAddVersionKey "FileDescription" "Orvia set-up"
VIAddVersionKey "FileVersion" "${VERSION}"
VIAddVersionKey "ProductVersion" "${VERSION}"
VIAddVersionKey "LegalCopyright" "Orvia maintainers"

!define MUI_ICON "${ICON}"
!define MUI_UNICON "${ICON}"
!define MUI_FINISHPAGE_RUN "$INSTDIR\orvia.exe"
!insertmacro MULTIUSER_PAGE_INSTALLMODE
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
!insertmacro MUI_PAGE_FINISH
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES
!insertmacro MUI_LANGUAGE "English"

Var Told   ; the folder that the command line names
Var Older  ; the folder in which an older version is, or was

; A program that runs cannot be written over. Refuses before anything is touched.
!macro RefuseIfRunning un
Function ${un}RefuseIfRunning
  Exch $1
  ${If} ${FileExists} "$1\orvia.exe"
    ClearErrors
    FileOpen $0 "$1\orvia.exe" a
    ${If} ${Errors}
      MessageBox MB_OK|MB_ICONSTOP "Orvia is running, or its folder may not be changed by you.$\r$\nClose Orvia, then start this again." /SD IDOK
      SetErrorLevel ${RUNS}
      Quit
    ${EndIf}
    FileClose $0
  ${EndIf}
  Pop $1
FunctionEnd
!macroend
!insertmacro RefuseIfRunning ""
!insertmacro RefuseIfRunning "un."

; RefuseAt un folder
!macro RefuseAt UN FOLDER
  Push "${FOLDER}"
  Call ${UN}RefuseIfRunning
!macroend

; NameType extension type words: gives a kind of file its name and picture. Another program's stays.
!macro NameType EXTENSION TYPE WORDS
  WriteRegStr SHCTX "Software\Classes\${TYPE}" "" "${WORDS}"
  WriteRegStr SHCTX "Software\Classes\${TYPE}\DefaultIcon" "" "$INSTDIR\orvia.exe,0"
  ReadRegStr $0 SHCTX "Software\Classes\${EXTENSION}" ""
  ${If} $0 == ""
    WriteRegStr SHCTX "Software\Classes\${EXTENSION}" "" "${TYPE}"
  ${EndIf}
!macroend
!macro ForgetType EXTENSION TYPE
  ReadRegStr $0 SHCTX "Software\Classes\${EXTENSION}" ""
  ${If} $0 == "${TYPE}"
    DeleteRegValue SHCTX "Software\Classes\${EXTENSION}" ""
    DeleteRegKey /ifempty SHCTX "Software\Classes\${EXTENSION}"
  ${EndIf}
  DeleteRegKey SHCTX "Software\Classes\${TYPE}"
!macroend

; The desktop looks at kinds of files anew.
!macro TellDesktop
  System::Call 'shell32::SHChangeNotify(i 0x08000000, i 0, p 0, p 0)'
!macroend

Function .onInit
  ; Whoever is asked for whom to install forgets the folder of the command line, which stands here until then.
  StrCpy $Told $INSTDIR
  !insertmacro MULTIUSER_INIT
  ${If} $Told != ""
    StrCpy $INSTDIR $Told
  ${EndIf}
  !insertmacro RefuseAt "" "$INSTDIR"
FunctionEnd

Function un.onInit
  !insertmacro MULTIUSER_UNINIT
  !insertmacro RefuseAt "un." "$INSTDIR"
FunctionEnd

Section "Orvia"
  !insertmacro RefuseAt "" "$INSTDIR"
  ; What an older version had and this one has not goes with that version, wherever it is.
  ReadRegStr $Older SHCTX "${UNINSTALL}" "InstallLocation"
  ${If} $Older == ""
    StrCpy $Older "$INSTDIR"
  ${EndIf}
  !insertmacro RefuseAt "" "$Older"
  ${If} ${FileExists} "$Older\uninstall.exe"
    ExecWait '"$Older\uninstall.exe" /S /$MultiUser.InstallMode _?=$Older'
    Delete "$Older\uninstall.exe"
    RMDir "$Older"
  ${EndIf}
  SetOverwrite on
  ClearErrors
  !include "${LISTS}\install.nsh"
  WriteUninstaller "$INSTDIR\uninstall.exe"
  ${If} ${Errors}
    MessageBox MB_OK|MB_ICONSTOP "Not all files could be written to $INSTDIR." /SD IDOK
    SetErrorLevel 2
    Quit
  ${EndIf}
  SetOutPath "$INSTDIR"
  CreateShortCut "$SMPROGRAMS\Orvia.lnk" "$INSTDIR\orvia.exe"

  !insertmacro NameType ".obk" "Orvia.AddressBook" "Orvia address book"
  !insertmacro NameType ".set" "Orvia.Setup" "Orvia logger set-up"
  !insertmacro TellDesktop

  WriteRegStr SHCTX "${UNINSTALL}" "DisplayName" "Orvia"
  WriteRegStr SHCTX "${UNINSTALL}" "DisplayVersion" "${VERSION}"
  WriteRegStr SHCTX "${UNINSTALL}" "DisplayIcon" "$INSTDIR\orvia.exe,0"
  WriteRegStr SHCTX "${UNINSTALL}" "Publisher" "Orvia maintainers"
  WriteRegStr SHCTX "${UNINSTALL}" "InstallLocation" "$INSTDIR"
  WriteRegStr SHCTX "${UNINSTALL}" "UninstallString" '"$INSTDIR\uninstall.exe" /$MultiUser.InstallMode'
  WriteRegStr SHCTX "${UNINSTALL}" "QuietUninstallString" '"$INSTDIR\uninstall.exe" /$MultiUser.InstallMode /S'
  WriteRegDWORD SHCTX "${UNINSTALL}" "NoModify" 1
  WriteRegDWORD SHCTX "${UNINSTALL}" "NoRepair" 1
  ${GetSize} "$INSTDIR" "/S=0K" $0 $1 $2
  IntFmt $0 "0x%08X" $0
  WriteRegDWORD SHCTX "${UNINSTALL}" "EstimatedSize" "$0"
SectionEnd

Section "Uninstall"
  Delete "$SMPROGRAMS\Orvia.lnk"
  !insertmacro ForgetType ".obk" "Orvia.AddressBook"
  !insertmacro ForgetType ".set" "Orvia.Setup"
  !insertmacro TellDesktop
  SetOutPath "$TEMP"
  ; Written by the program beside itself when it closes.
  Delete "$INSTDIR\orvia.ini"
  Delete "$INSTDIR\uninstall.exe"
  !include "${LISTS}\uninstall.nsh"
  DeleteRegKey SHCTX "${UNINSTALL}"
SectionEnd
