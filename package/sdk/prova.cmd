@echo off
rem Plays the scenarios of this SDK through the installed Vellumo.dll, on SQLite or on a SQL Server, and writes one page
rem that says what held: prova.html, or where /report says. Needs nothing but Windows, and an administrator.
rem
rem   prova.cmd [x86] [x64] [/database "CONNECTION"] [/setup FILE] [/report FILE] [SCENARIO...]
rem
rem   x86, x64    only the library for programs of this kind; otherwise both
rem   /database   connection string of a SQL Server, without a database, such as
rem               "Driver={SQL Server};Server=.\SQLEXPRESS;Trusted_Connection=yes"
rem               The databases VellumoProva_Studio and VellumoProva_Norda are made there, used and removed.
rem   /setup      the installer, which is then tried without rights
rem   SCENARIO    only these files of the folder scenarios, without ".scenario"
rem
rem Exit code: 0 all holds, 1 something does not, 2 it could not be tried, 3 not on this machine.
set PROVA=%~dp0bin\x86\prova.exe
"%PROVA%" "%~dp0." %*
exit /b %errorlevel%
