@echo off
rem unregister.cmd [/user]
rem Removes every registration of the component, as administrator, or with /user only the current
rem user's. Prints and returns what register.cmd does.
call "%~dp0register.cmd" /u %*
