; The installer for practices, one for 32-bit and 64-bit Windows, Italian and English.
;
;   makensis -DVERSION=1.2.3.456 -DSTAGE=folder -DOUTFILE=file vellumo.nsi
;
; STAGE holds what is installed: Vellumo.dll, VellumoDiagnosi.exe and chi_usa.exe in x86 and x64, templates\*, LEGGIMI.txt,
; documenti\*.html. Command line and exit codes are told by docs/installing.md; the numbers stand here once:
!define EXIT_CANCELLED 1
!define EXIT_FAILED 2
!define EXIT_NO_RIGHTS 3
!define EXIT_NO_HOST 4
!define EXIT_OLDER 5
!define EXIT_IN_USE 6
!define EXIT_RESTART 3010 ; the system's own number for it

Unicode true
SetCompressor /SOLID lzma
RequestExecutionLevel admin
ManifestSupportedOS all
CRCCheck on
AllowSkipFiles off

!include MUI2.nsh
!include x64.nsh
!include LogicLib.nsh
!include FileFunc.nsh
!include WordFunc.nsh

!define REG "Software\Vellumo"
!define REG_REMOVE "Software\Microsoft\Windows\CurrentVersion\Uninstall\Vellumo"
!define HOST_PROGRAM "Norda.exe"
!define DIAGNOSIS "VellumoDiagnosi.exe"
!define MENU_ENTRY "Diagnosi di Vellumo"
!define MENU_ENTRY_64 "Diagnosi di Vellumo (programmi a 64 bit)"
!define REG_HOST "SOFTWARE\Microsoft\Windows\CurrentVersion\App Paths\${HOST_PROGRAM}"

Name "Vellumo ${VERSION}"
OutFile "${OUTFILE}"
InstallDir "" ; chosen in .onInit
ShowInstDetails show
ShowUninstDetails show
BrandingText "Vellumo ${VERSION}"

VIProductVersion "${VERSION}"
VIFileVersion "${VERSION}"
VIAddVersionKey /LANG=0 "CompanyName" "Vellumo"
VIAddVersionKey /LANG=0 "FileDescription" "Installazione di Vellumo"
VIAddVersionKey /LANG=0 "FileVersion" "${VERSION}"
VIAddVersionKey /LANG=0 "LegalCopyright" "Vellumo"
VIAddVersionKey /LANG=0 "ProductName" "Vellumo"
VIAddVersionKey /LANG=0 "ProductVersion" "${VERSION}"

Var Host       ; folder of the host program
Var LogFile    ; handle; "" while there is none
Var LogPath
Var Was        ; version that is installed; "" when none is
Var InUse      ; programs that have the library loaded, one a line; "" when none has
Var AtRestart  ; 1: files are replaced when the machine starts again
Var Kept       ; templates of the practice's own that were kept, one a line

!define MUI_ABORTWARNING
!define MUI_CUSTOMFUNCTION_ABORT OnCancel
!insertmacro MUI_PAGE_WELCOME
!define MUI_PAGE_CUSTOMFUNCTION_PRE SkipWhenHostKnown
!define MUI_DIRECTORYPAGE_VARIABLE $Host
!define MUI_PAGE_HEADER_TEXT "$(HostTitle)"
!define MUI_PAGE_HEADER_SUBTEXT "$(HostSubtitle)"
!define MUI_DIRECTORYPAGE_TEXT_TOP "$(HostQuestion)"
!define MUI_DIRECTORYPAGE_TEXT_DESTINATION "$(HostFolder)"
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
!insertmacro MUI_PAGE_FINISH
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES
!insertmacro MUI_LANGUAGE "Italian"
!insertmacro MUI_LANGUAGE "English"
!include strings.nsh

; --- Log ------------------------------------------------------------------------------------------------------------

!macro LogLine text
  DetailPrint "${text}"
  ${If} $LogFile != ""
    FileWriteUTF16LE $LogFile "${text}$\r$\n"
  ${EndIf}
!macroend
!define Log "!insertmacro LogLine"

!macro OpenLog name
  ${If} $LogPath == ""
    StrCpy $LogPath "$TEMP\${name}"
  ${EndIf}
  FileOpen $LogFile "$LogPath" w
  ${If} $LogFile != ""
    FileWriteWord $LogFile 0xFEFF
  ${EndIf}
!macroend

; Tells why nothing is done and ends. Silent: the line is in the log, the number is the answer.
!macro Refuse text code
  ${Log} "${text}"
  ${IfNot} ${Silent}
    MessageBox MB_OK|MB_ICONSTOP "${text}"
  ${EndIf}
  SetErrorLevel ${code}
  Quit
!macroend
!define Refuse "!insertmacro Refuse"

; --- Both the installer and the remover --------------------------------------------------------------------------------

!macro Shared un
Function ${un}RequireRights
  ; /RIGHTS=none plays a user without rights, for whoever checks this installer where every user has them.
  ${GetParameters} $0
  ClearErrors
  ${GetOptions} $0 "/RIGHTS=" $1
  ${If} ${Errors}
    UserInfo::GetAccountType
    Pop $1
  ${EndIf}
  ${If} $1 != "Admin"
    ${Refuse} "$(NoRights)" ${EXIT_NO_RIGHTS}
  ${EndIf}
FunctionEnd

; $0: x86 or x64; $InUse gets the programs that have this library loaded.
Function ${un}AskWhoUses
  ${IfNot} ${FileExists} "$INSTDIR\$0\Vellumo.dll"
    Return
  ${EndIf}
  nsExec::ExecToStack '"$PLUGINSDIR\$0\chi_usa.exe" "$INSTDIR\$0\Vellumo.dll"'
  Pop $1
  Pop $2
  ${If} $1 == 1
    StrCpy $InUse "$InUse$2"
  ${EndIf}
FunctionEnd

Function ${un}FindWhoUses
  StrCpy $InUse ""
  InitPluginsDir
  SetOutPath "$PLUGINSDIR\x86"
  File "${STAGE}\x86\chi_usa.exe"
  StrCpy $0 x86
  Call ${un}AskWhoUses
  ${If} ${RunningX64}
    SetOutPath "$PLUGINSDIR\x64"
    File "${STAGE}\x64\chi_usa.exe"
    StrCpy $0 x64
    Call ${un}AskWhoUses
  ${EndIf}
  SetOutPath "$TEMP"
FunctionEnd

; $0: x86 or x64, $1: "" or "/u". The result is in $2, 0 for success.
Function ${un}RunRegsvr32
  ${If} $0 == x64
    StrCpy $3 "$WINDIR\sysnative\regsvr32.exe"
    ${IfNot} ${FileExists} $3
      ${DisableX64FSRedirection}
      StrCpy $3 "$WINDIR\system32\regsvr32.exe"
    ${EndIf}
  ${Else}
    StrCpy $3 "$SYSDIR\regsvr32.exe"
  ${EndIf}
  ClearErrors
  ExecWait '"$3" /s $1 "$INSTDIR\$0\Vellumo.dll"' $2
  ${If} ${Errors}
    StrCpy $2 -1
  ${EndIf}
  ${EnableX64FSRedirection}
FunctionEnd

; $0, $1: two files. $2: 1 when they hold the same.
Function ${un}HaveSameBytes
  StrCpy $2 0
  ClearErrors
  FileOpen $3 $0 r
  FileOpen $4 $1 r
  ${If} ${Errors}
    Goto done
  ${EndIf}
  FileSeek $3 0 END $5
  FileSeek $4 0 END $6
  ${If} $5 <> $6
    Goto done
  ${EndIf}
  FileSeek $3 0
  FileSeek $4 0
  ${Do}
    ClearErrors
    FileReadByte $3 $5
    ${If} ${Errors}
      StrCpy $2 1
      ${ExitDo}
    ${EndIf}
    FileReadByte $4 $6
    ${If} $5 <> $6
      ${ExitDo}
    ${EndIf}
  ${Loop}
done:
  FileClose $3
  FileClose $4
FunctionEnd
!macroend
!insertmacro Shared ""
!insertmacro Shared "un."

; --- Before anything is changed ------------------------------------------------------------------------------------------

Function FindHost
  ${GetParameters} $0
  ClearErrors
  ${GetOptions} $0 "/HOST=" $Host
  ${IfNot} ${Errors}
    Return
  ${EndIf}
  StrCpy $Host ""
  ${If} ${RunningX64}
    SetRegView 64
    ReadRegStr $Host HKLM "${REG_HOST}" "Path"
    SetRegView 32
  ${EndIf}
  ${If} $Host == ""
    ReadRegStr $Host HKLM "${REG_HOST}" "Path"
  ${EndIf}
FunctionEnd

Function .onInit
  ${GetParameters} $0
  ClearErrors
  ${GetOptions} $0 "/LOG=" $LogPath
  ${If} ${Errors}
    StrCpy $LogPath ""
  ${EndIf}
  !insertmacro OpenLog "Vellumo-installazione.log"
  ${Log} "Vellumo ${VERSION}: $CMDLINE"
  Call RequireRights

  ${If} ${RunningX64}
    SetRegView 64
  ${EndIf}
  ReadRegStr $Was HKLM "${REG}" "Versione"
  ${If} $INSTDIR == ""
    ReadRegStr $INSTDIR HKLM "${REG}" "Cartella"
  ${EndIf}
  SetRegView 32
  ${If} $INSTDIR == ""
    ${If} ${RunningX64}
      StrCpy $INSTDIR "$PROGRAMFILES64\Vellumo"
    ${Else}
      StrCpy $INSTDIR "$PROGRAMFILES\Vellumo"
    ${EndIf}
  ${EndIf}

  ${If} $Was != ""
    ${VersionCompare} "$Was" "${VERSION}" $1
    ${GetParameters} $0
    ClearErrors
    ${GetOptions} $0 "/OLDER" $2
    ${If} $1 == 1
    ${AndIf} ${Errors}
      ${Refuse} "$(Older)" ${EXIT_OLDER}
    ${EndIf}
    ${Log} "Installato: $Was"
  ${EndIf}

  Call FindHost
  ${If} ${Silent}
  ${AndIf} $Host == ""
    ${Refuse} "$(NoHost)" ${EXIT_NO_HOST}
  ${EndIf}
FunctionEnd

Function SkipWhenHostKnown
  ${If} $Host != ""
    Abort
  ${EndIf}
FunctionEnd

Function OnCancel
  SetErrorLevel ${EXIT_CANCELLED}
FunctionEnd

; A library in use cannot be replaced under the program's feet: the person closes the program and tries again, or,
; where nobody is asked, everything waits for the next start of the machine.
Function SettleUse
again:
  Call FindWhoUses
  ${If} $InUse == ""
    Return
  ${EndIf}
  ${Log} "In uso da: $InUse"
  ${If} ${Silent}
    StrCpy $AtRestart 1
    Return
  ${EndIf}
  MessageBox MB_RETRYCANCEL|MB_ICONEXCLAMATION "$(InUseText)" IDRETRY again
  ${Log} "$(NothingChanged)"
  SetErrorLevel ${EXIT_IN_USE}
  Quit
FunctionEnd

; --- Installing ----------------------------------------------------------------------------------------------------------

; Puts $0 in the place of $1: now, or when the machine starts again, and then all of them.
Function Place
  ${If} $AtRestart == 1
    CopyFiles /SILENT "$0" "$1.nuovo"
    System::Call 'kernel32::MoveFileExW(w "$1.nuovo", w "$1", i 5) i .r2' ; replace, delayed until the restart
    ${If} $2 == 0
      ${Refuse} "$(NotWritten) $1" ${EXIT_FAILED}
    ${EndIf}
    Return
  ${EndIf}
  ClearErrors
  CopyFiles /SILENT "$0" "$1.nuovo"
  Delete "$1"
  Rename "$1.nuovo" "$1"
  ${If} ${Errors}
    ${Refuse} "$(NotWritten) $1" ${EXIT_FAILED}
  ${EndIf}
  ${Log} "$1"
FunctionEnd

; The library and the support program of one bitness.
!macro PlacePrograms bitness
  CreateDirectory "$INSTDIR\${bitness}"
  SetOutPath "$PLUGINSDIR\new\${bitness}"
  File "${STAGE}\${bitness}\Vellumo.dll"
  StrCpy $0 "$PLUGINSDIR\new\${bitness}\Vellumo.dll"
  StrCpy $1 "$INSTDIR\${bitness}\Vellumo.dll"
  Call Place
  File "${STAGE}\${bitness}\${DIAGNOSIS}"
  StrCpy $0 "$PLUGINSDIR\new\${bitness}\${DIAGNOSIS}"
  StrCpy $1 "$INSTDIR\${bitness}\${DIAGNOSIS}"
  Call Place
!macroend

; Most hosts are 32-bit programs, so theirs has the plain name. For all users.
Function MakeMenuEntries
  SetShellVarContext all
  SetOutPath "$INSTDIR"
  CreateDirectory "$SMPROGRAMS\Vellumo"
  CreateShortCut "$SMPROGRAMS\Vellumo\${MENU_ENTRY}.lnk" "$INSTDIR\x86\${DIAGNOSIS}"
  ${If} ${RunningX64}
    CreateShortCut "$SMPROGRAMS\Vellumo\${MENU_ENTRY_64}.lnk" "$INSTDIR\x64\${DIAGNOSIS}"
  ${EndIf}
FunctionEnd

; $R0: name of a template. What the practice changed is kept: it differs from what was installed before.
Function PlaceTemplate
  StrCpy $0 "$Host\SISS\Templates\$R0"
  ${If} ${FileExists} $0
    StrCpy $1 "$PLUGINSDIR\templates\$R0"
    Call HaveSameBytes
    ${If} $2 == 0
      StrCpy $1 "$INSTDIR\templates\$R0"
      Call HaveSameBytes
      ${If} $2 == 0
        StrCpy $Kept "$Kept$R0$\r$\n"
        ${Log} "$(TemplateKept) $0"
        StrCpy $1 "$0.nuovo"
        StrCpy $0 "$PLUGINSDIR\templates\$R0"
        CopyFiles /SILENT "$0" "$1"
        Goto original
      ${EndIf}
    ${EndIf}
  ${EndIf}
  StrCpy $0 "$PLUGINSDIR\templates\$R0"
  StrCpy $1 "$Host\SISS\Templates\$R0"
  Call Place
original:
  ; What was installed is remembered, so that the next version knows what the practice changed.
  StrCpy $0 "$PLUGINSDIR\templates\$R0"
  StrCpy $1 "$INSTDIR\templates\$R0"
  Call Place
FunctionEnd

Function PlaceTemplates
  InitPluginsDir
  SetOutPath "$PLUGINSDIR\templates"
  File "${STAGE}\templates\*.template"
  CreateDirectory "$Host\SISS\Templates"
  CreateDirectory "$INSTDIR\templates"
  FindFirst $R1 $R0 "$PLUGINSDIR\templates\*.template"
  ${DoWhile} $R0 != ""
    Call PlaceTemplate
    FindNext $R1 $R0
  ${Loop}
  FindClose $R1
FunctionEnd

; $0: a folder where every user may make files, and reads and deletes his own; administrators all. The well-known
; identifiers: administrators, the system, the owner of what is made, users.
Function MakeUsersFolder
  ${IfNot} ${FileExists} "$0\*.*"
    CreateDirectory "$0"
    nsExec::Exec '"$SYSDIR\icacls.exe" "$0" /inheritance:r /grant *S-1-5-32-544:(OI)(CI)F *S-1-5-18:(OI)(CI)F *S-1-3-0:(OI)(CI)(IO)F *S-1-5-32-545:(RX,WD,AD)'
    Pop $1
    ${Log} "$0 (icacls: $1)"
  ${EndIf}
FunctionEnd

; $0: x86 or x64. What cannot be registered is taken back.
Function Register
  StrCpy $1 ""
  Call RunRegsvr32
  ${Log} "regsvr32 $0: $2"
  ${If} $2 != 0
    ${Refuse} "$(NotRegistered)" ${EXIT_FAILED}
  ${EndIf}
FunctionEnd

Section "Vellumo"
  StrCpy $AtRestart 0
  StrCpy $Kept ""
  Call SettleUse
  InitPluginsDir
  !insertmacro PlacePrograms x86
  ${If} ${RunningX64}
    !insertmacro PlacePrograms x64
  ${EndIf}
  Call PlaceTemplates
  StrCpy $0 "$Host\SISS\Log"
  Call MakeUsersFolder
  StrCpy $0 "$Host\SISS\Tracce"
  Call MakeUsersFolder

  ; Until the restart the old files serve, which are registered already at the same place.
  ${If} $AtRestart == 0
    StrCpy $0 x86
    Call Register
    ${If} ${RunningX64}
      StrCpy $0 x64
      Call Register
    ${EndIf}
  ${EndIf}

  SetOutPath "$INSTDIR"
  File "${STAGE}\LEGGIMI.txt"
  SetOutPath "$INSTDIR\documenti"
  File "${STAGE}\documenti\*.html"
  SetOutPath "$INSTDIR"
  Call MakeMenuEntries
  WriteUninstaller "$INSTDIR\disinstalla.exe"
  ${If} ${RunningX64}
    SetRegView 64
  ${EndIf}
  WriteRegStr HKLM "${REG}" "Versione" "${VERSION}"
  WriteRegStr HKLM "${REG}" "Cartella" "$INSTDIR"
  WriteRegStr HKLM "${REG}" "Host" "$Host"
  WriteRegStr HKLM "${REG_REMOVE}" "DisplayName" "Vellumo"
  WriteRegStr HKLM "${REG_REMOVE}" "DisplayVersion" "${VERSION}"
  WriteRegStr HKLM "${REG_REMOVE}" "Publisher" "Vellumo"
  WriteRegStr HKLM "${REG_REMOVE}" "InstallLocation" "$INSTDIR"
  WriteRegStr HKLM "${REG_REMOVE}" "UninstallString" '"$INSTDIR\disinstalla.exe"'
  WriteRegStr HKLM "${REG_REMOVE}" "QuietUninstallString" '"$INSTDIR\disinstalla.exe" /S'
  WriteRegDWORD HKLM "${REG_REMOVE}" "NoModify" 1
  WriteRegDWORD HKLM "${REG_REMOVE}" "NoRepair" 1
  SetRegView 32

  ${If} $Kept != ""
  ${AndIfNot} ${Silent}
    MessageBox MB_OK|MB_ICONINFORMATION "$(TemplatesKept)$\r$\n$\r$\n$Kept"
  ${EndIf}
  ${If} $AtRestart == 1
    ${Log} "$(Restart)"
    SetRebootFlag true
    SetErrorLevel ${EXIT_RESTART}
  ${Else}
    ${Log} "$(Done)"
    SetErrorLevel 0
  ${EndIf}
SectionEnd

; --- Removing ------------------------------------------------------------------------------------------------------------

Function un.onInit
  ${GetParameters} $0
  ClearErrors
  ${GetOptions} $0 "/LOG=" $LogPath
  ${If} ${Errors}
    StrCpy $LogPath ""
  ${EndIf}
  !insertmacro OpenLog "Vellumo-rimozione.log"
  Call un.RequireRights
  ${If} ${RunningX64}
    SetRegView 64
  ${EndIf}
  ReadRegStr $Host HKLM "${REG}" "Host"
  SetRegView 32
again:
  Call un.FindWhoUses
  ${If} $InUse != ""
    ${Log} "In uso da: $InUse"
    ${IfNot} ${Silent}
      MessageBox MB_RETRYCANCEL|MB_ICONEXCLAMATION "$(InUseText)" IDRETRY again
    ${EndIf}
    ${Log} "$(NothingChanged)"
    SetErrorLevel ${EXIT_IN_USE}
    Quit
  ${EndIf}
FunctionEnd

; $R0: name of a template. One that the practice changed is its own.
Function un.RemoveTemplate
  StrCpy $0 "$Host\SISS\Templates\$R0"
  StrCpy $1 "$INSTDIR\templates\$R0"
  Call un.HaveSameBytes
  ${If} $2 == 1
    Delete "$0"
  ${ElseIf} ${FileExists} "$0"
    ${Log} "$(TemplateKept) $0"
  ${EndIf}
  Delete "$0.nuovo"
  Delete "$1"
FunctionEnd

Section "un.Vellumo"
  StrCpy $1 "/u"
  StrCpy $0 x86
  Call un.RunRegsvr32
  ${Log} "regsvr32 /u $0: $2"
  ${If} ${RunningX64}
    StrCpy $0 x64
    StrCpy $1 "/u"
    Call un.RunRegsvr32
    ${Log} "regsvr32 /u $0: $2"
  ${EndIf}
  FindFirst $R1 $R0 "$INSTDIR\templates\*.template"
  ${DoWhile} $R0 != ""
    Call un.RemoveTemplate
    FindNext $R1 $R0
  ${Loop}
  FindClose $R1
  Delete "$INSTDIR\x86\Vellumo.dll"
  Delete "$INSTDIR\x64\Vellumo.dll"
  Delete "$INSTDIR\x86\${DIAGNOSIS}"
  Delete "$INSTDIR\x64\${DIAGNOSIS}"
  SetShellVarContext all
  Delete "$SMPROGRAMS\Vellumo\${MENU_ENTRY}.lnk"
  Delete "$SMPROGRAMS\Vellumo\${MENU_ENTRY_64}.lnk"
  RMDir "$SMPROGRAMS\Vellumo"
  Delete "$INSTDIR\LEGGIMI.txt"
  Delete "$INSTDIR\documenti\assistenza.html"
  Delete "$INSTDIR\documenti\studio.html"
  Delete "$INSTDIR\documenti\privacy.html"
  Delete "$INSTDIR\disinstalla.exe"
  ; Folders go only when they are empty.
  RMDir "$INSTDIR\x86"
  RMDir "$INSTDIR\x64"
  RMDir "$INSTDIR\templates"
  RMDir "$INSTDIR\documenti"
  RMDir "$INSTDIR"
  RMDir "$Host\SISS\Templates"
  RMDir "$Host\SISS\Log"
  RMDir "$Host\SISS\Tracce"
  ${If} ${FileExists} "$Host\SISS\Log\*.*"
    ${Log} "$(LogsStay) $Host\SISS\Log"
  ${EndIf}
  ${If} ${FileExists} "$Host\SISS\Tracce\*.*"
    ${Log} "$(LogsStay) $Host\SISS\Tracce"
  ${EndIf}
  RMDir "$Host\SISS"
  ${If} ${RunningX64}
    SetRegView 64
  ${EndIf}
  DeleteRegKey HKLM "${REG}"
  DeleteRegKey HKLM "${REG_REMOVE}"
  SetRegView 32
  ${Log} "$(Removed)"
SectionEnd
