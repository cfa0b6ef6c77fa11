@echo off
rem register.cmd [/user]
rem Registers the component in this folder, on a 64-bit Windows in both bitnesses. IIS needs the
rem registration for the machine, as administrator. With /user it is only for programs that the current
rem user runs, such as cscript: IIS does not look at a user's classes.
rem Prints the result for each bitness. The exit status is 0 when all went well, 1 when something
rem failed, 2 for a wrong command line.
rem unregister.cmd calls this with /u as the first argument, which removes the registration.
setlocal
set "here=%~dp0"
set failed=0
set options=/s
set done=registered
set user=
if /i "%~1"=="/u" (
  set options=/s /u
  set done=unregistered
  shift /1
)
if /i "%~1"=="/user" (
  set options=%options% /n /i:user
  set user=yes
  shift /1
)
if not "%~1"=="" (
  echo Usage: %~n0 [/user]
  echo With /user only programs that you run yourself find the component, not IIS.
  exit /b 2
)

call "%here%system_folders.cmd"
if defined x64 call :run "%x64%" x64
if defined x86 call :run "%x86%" x86
if not defined x64 if not defined x86 (
  echo This Windows, %architecture%, cannot run the component, which is for x64 and x86.
  exit /b 1
)
if %failed%==1 exit /b 1
if %done%==unregistered exit /b 0
if defined user echo Only programs that you run yourself find it, not IIS.
echo Run verify.cmd to check that it works.
exit /b 0

:run
set "dll=%here%%~2\QUENDAL_CLASSIC_ASP.DLL"
if not exist "%dll%" (
  echo %~2: FAILED, code 2: there is no "%dll%".
  echo   Unpack the whole package again, and run this command in its folder.
  set failed=1
  exit /b 0
)
"%~1\regsvr32.exe" %options% "%dll%"
set code=%errorlevel%
if %code%==0 (
  echo %~2: %done% "%dll%"
  exit /b 0
)
set failed=1
echo %~2: FAILED, regsvr32 status %code%, "%dll%"
if %code%==3 (
  echo   The DLL cannot be loaded. Is it the %~2 one of this package, and may you read it?
  echo   If Windows blocked the download, unblock the zip in its properties and unpack it again.
) else if %code%==4 (
  echo   The file is not this component. Unpack the package again.
) else if %code%==5 (
  if defined user (
    echo   The user's registry could not be written.
  ) else (
    echo   The registry could not be written, most often because access is denied, 0x80070005.
    echo   Run this command as administrator.
  )
) else (
  echo   regsvr32 itself has failed.
)
echo   For the system's own message run: "%~1\regsvr32.exe"%options:/s=% "%dll%"
exit /b 0
