@echo off
rem verify.cmd
rem Runs a VBScript and a JScript page with the registered component, in each registered bitness, and
rem says whether it works, or whether the registration or the library is at fault.
rem The exit status is 0 when everything that is registered works, otherwise 1.
setlocal
set "pages=%~dp0verify"
set "printed=%TEMP%\quendal_verify_%RANDOM%.txt"
set failed=0
set works=
set named=
call "%~dp0system_folders.cmd"
if defined x64 call :bitness "%x64%" x64
if defined x86 call :bitness "%x86%" x86
if exist "%printed%" del "%printed%"
if %failed%==1 exit /b 1
if defined works (
  echo What is registered works:%works%
  exit /b 0
)
if defined named (
  echo FAILED: the registration is at fault. The classes have names, but no DLL in any bitness.
) else (
  echo FAILED: the component is not registered.
)
echo   Run register.cmd as administrator, or repair the installation.
exit /b 1

rem The script's exit status is 0 when the bitness is registered, 10 when it is not, 11 when only the
rem names of the classes are, which both bitnesses share. Otherwise the script has printed the fault.
:bitness
"%~1\cscript.exe" //nologo "%pages%\verify.js" registration %2
set code=%errorlevel%
if %code%==10 exit /b 0
if %code%==11 (
  set named=yes
  exit /b 0
)
if not %code%==0 (
  set failed=1
  exit /b 0
)
set pageFailed=
call :page "%~1" %2 page.vbs VBScript
call :page "%~1" %2 page.js JScript
if not defined pageFailed set "works=%works% %~2"
exit /b 0

:page
"%~1\cscript.exe" //nologo "%pages%\%~3" >"%printed%" 2>&1
"%~1\cscript.exe" //nologo "%pages%\verify.js" page %2 %4 "%printed%" "%pages%\%~3.expected"
if errorlevel 1 (
  set failed=1
  set pageFailed=yes
)
exit /b 0
