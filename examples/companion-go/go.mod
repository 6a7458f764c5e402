module companion

go 1.19
