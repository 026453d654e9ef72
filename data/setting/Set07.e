 NO	0	No function	NONE
TM  	1	Thread trimmer	STANDARD
WP  	2	Wiper	STANDARD
PF  	3	Presser foot lifter	STANDARD
RV  	4	Reverse feed	STANDARD
TR  	5	Tension release	STANDARD
LP  	6	Lamp	SIGNAL
BZ  	7	ÉuÉUÅ[	SIGNAL
GO1 	64	General purpose output 1	GENERAL
GO2 	65	General purpose output 2	GENERAL
