; The Windows installer of Scorvane for Football, made by scripts/windows.sh (step "installer"):
;   makensis -DVERSION=2.1 -DICON=scorvane.ico -DFILES=files.nsh -DSIZE_KB=<n> -DOUTFILE=<setup.exe>
;            scorvane.nsi
; files.nsh is written from the staged program folder, the program as it is to be on the coach's
; computer (bin\ with the program, the report command and the DLLs and plugins they load;
; share\scorvane\ with the help pages, the default BXFB.INI and the sample season): what to install
; and, in the uninstaller, exactly what to remove again. The user's own files (BXFB.INI in
; %APPDATA%\Scorvane, the teams in %LOCALAPPDATA%\Scorvane or wherever the coach keeps them) are
; never touched.
;
; Silent use: setup.exe /S [/D=C:\Folder] installs; "Uninstall.exe /S" removes.

; A 64-bit installer for the 64-bit program.
Target amd64-unicode
SetCompressor /SOLID lzma
RequestExecutionLevel admin

!include "MUI2.nsh"

!define PRODUCT "Scorvane for Football"
!define UNINSTALL_KEY "Software\Microsoft\Windows\CurrentVersion\Uninstall\Scorvane"

Name "${PRODUCT}"
OutFile "${OUTFILE}"
InstallDir "$PROGRAMFILES64\Scorvane"
InstallDirRegKey HKLM "${UNINSTALL_KEY}" "InstallLocation"
BrandingText "${PRODUCT} ${VERSION}"

VIProductVersion "${VERSION}.0.0"
VIAddVersionKey "ProductName" "${PRODUCT}"
VIAddVersionKey "FileDescription" "${PRODUCT} Setup"
VIAddVersionKey "FileVersion" "${VERSION}"
VIAddVersionKey "ProductVersion" "${VERSION}"
VIAddVersionKey "CompanyName" "Scorvane"
VIAddVersionKey "LegalCopyright" "Scorvane"

!define MUI_ICON "${ICON}"
!define MUI_UNICON "${ICON}"
!define MUI_ABORTWARNING
!define MUI_FINISHPAGE_RUN "$INSTDIR\bin\scorvane.exe"
!define MUI_FINISHPAGE_RUN_TEXT "Start ${PRODUCT}"

!insertmacro MUI_PAGE_WELCOME
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
!insertmacro MUI_PAGE_FINISH
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES
!insertmacro MUI_LANGUAGE "English"

; The files and folders, as install and remove macros (InstallFiles, RemoveFiles).
!include "${FILES}"

Function .onInit
    SetRegView 64
FunctionEnd

Function un.onInit
    SetRegView 64
FunctionEnd

Section "Program" Program
    SectionIn RO
    SetShellVarContext all
    !insertmacro InstallFiles
    WriteUninstaller "$INSTDIR\Uninstall.exe"

    CreateShortcut "$SMPROGRAMS\${PRODUCT}.lnk" "$INSTDIR\bin\scorvane.exe" "" \
        "$INSTDIR\bin\scorvane.exe" 0 SW_SHOWNORMAL "" "${PRODUCT}"

    WriteRegStr HKLM "${UNINSTALL_KEY}" "DisplayName" "${PRODUCT}"
    WriteRegStr HKLM "${UNINSTALL_KEY}" "DisplayVersion" "${VERSION}"
    WriteRegStr HKLM "${UNINSTALL_KEY}" "Publisher" "Scorvane"
    WriteRegStr HKLM "${UNINSTALL_KEY}" "DisplayIcon" "$INSTDIR\bin\scorvane.exe,0"
    WriteRegStr HKLM "${UNINSTALL_KEY}" "InstallLocation" "$INSTDIR"
    WriteRegStr HKLM "${UNINSTALL_KEY}" "UninstallString" '"$INSTDIR\Uninstall.exe"'
    WriteRegStr HKLM "${UNINSTALL_KEY}" "QuietUninstallString" '"$INSTDIR\Uninstall.exe" /S'
    WriteRegDWORD HKLM "${UNINSTALL_KEY}" "NoModify" 1
    WriteRegDWORD HKLM "${UNINSTALL_KEY}" "NoRepair" 1
    WriteRegDWORD HKLM "${UNINSTALL_KEY}" "EstimatedSize" ${SIZE_KB}
SectionEnd

; Removes what was installed, file by file, and then each folder that is left empty: anything a
; coach put into the program's folder stays.
Section "Uninstall"
    SetShellVarContext all
    Delete "$SMPROGRAMS\${PRODUCT}.lnk"
    !insertmacro RemoveFiles
    Delete "$INSTDIR\Uninstall.exe"
    RMDir "$INSTDIR"
    DeleteRegKey HKLM "${UNINSTALL_KEY}"
SectionEnd
