@echo off
rem register.cmd [/user]
rem Registers the component as it lies here, on a 64-bit Windows in both bitnesses: for the machine,
rem as administrator, which is what IIS needs. With /user it is for programs that the current user
rem runs himself, as cscript: IIS does not look at the classes of a user.
rem unregister.cmd calls this with /u first, which takes the registration back.
setlocal
set "here=%~dp0"
set failed=0
set options=/s
if /i "%~1"=="/u" (
  set options=/s /u
  shift /1
)
if /i "%~1"=="/user" (
  set options=%options% /n /i:user
  shift /1
)
if not "%~1"=="" (
  echo Usage: %~n0 [/user]
  echo /user is for programs that the current user runs himself. IIS needs the machine.
  exit /b 2
)

rem A 32-bit command interpreter sees the 64-bit system folder under another name.
set architecture=%PROCESSOR_ARCHITECTURE%
set "system=%SystemRoot%\System32"
if defined PROCESSOR_ARCHITEW6432 (
  set architecture=%PROCESSOR_ARCHITEW6432%
  set "system=%SystemRoot%\Sysnative"
)
if /i "%architecture%"=="x86" (
  call :run "%system%" x86
) else (
  if /i "%architecture%"=="AMD64" call :run "%system%" x64
  rem Servers may lack the 32-bit subsystem; then there is no x86 program to register for.
  if exist "%SystemRoot%\SysWOW64\regsvr32.exe" call :run "%SystemRoot%\SysWOW64" x86
)
if %failed%==1 if "%options:user=%"=="%options%" echo To change what is registered for the machine takes an administrator's rights.
if %failed%==0 if "%options%"=="/s /n /i:user" echo This is for programs that you run yourself: IIS does not see it.
exit /b %failed%

:run
"%~1\regsvr32.exe" %options% "%here%%~2\QUENDAL_CLASSIC_ASP.DLL"
if errorlevel 1 (
  echo %~2: failed
  set failed=1
) else (
  echo %~2: done
)
exit /b 0
