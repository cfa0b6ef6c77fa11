@echo off
rem Sets x64 and x86 to the system folders of each bitness in which this Windows can run the component;
rem the other stays empty. Called by the commands beside it.
set x64=
set x86=
set architecture=%PROCESSOR_ARCHITECTURE%
set "system=%SystemRoot%\System32"
rem A 32-bit command interpreter sees the 64-bit system folder under another name.
if defined PROCESSOR_ARCHITEW6432 (
  set architecture=%PROCESSOR_ARCHITEW6432%
  set "system=%SystemRoot%\Sysnative"
)
if /i "%architecture%"=="x86" set "x86=%system%"
if /i "%architecture%"=="AMD64" set "x64=%system%"
rem Servers may lack the 32-bit subsystem; then there is no x86 program to serve.
if /i not "%architecture%"=="x86" if exist "%SystemRoot%\SysWOW64\regsvr32.exe" set "x86=%SystemRoot%\SysWOW64"
exit /b 0
