@echo off
rem unregister.cmd [/user]
rem Takes back every registration of the component, or with /user only the current user's.
call "%~dp0register.cmd" /u %*
