-q
-dSAFER
-dNOPAUSE
-dBATCH
-sstdout#"C:\Temp\x_params.out"
-dPDFSETTINGS#/printer
-sDEVICE#pdfwrite
-sFONTPATH#"C:\WINDOWS\Fonts"
-sOutputFile#"C:\Temp\x_printer.pdf"
-dCompatibilityLevel#1.6
-c
.setpdfwrite
-f
"C:\Temp\x_header.ps"
"C:\jobs\ü b.ps"
