X001	256	Pedal forward	IN	0	0
X002	257	Pedal back (heel)	IN	0	0
X003	258	Knee switch	IN	0	0
X004	259	Needle-up position sensor	IN	0	0
X005	260	押え上げスイッチ	IN	0	0
X006	261	布端センサー	IN	0	0
X007	262	Thread break detector	IN	0	0
X008	263	Bobbin thread sensor	IN	0	0
X009	264	Safety switch of the belt cover	IN	0	0
X010	265	手元スイッチ（前）	IN	0	0
X011	266		IN	0	0
X012	267		IN	0	0
X013	268		IN	0	0
X014	269		IN	0	0
X015	270		IN	0	0
X016	271		IN	0	0
X017	272		IN	0	0
X018	273		IN	0	0
X019	274		IN	0	0
X020	275		IN	0	0
X021	276		IN	0	0
X022	277		IN	0	0
X023	278		IN	0	0
X024	279		IN	0	0
M01	300	メモリースイッチ１	IN	0	0
M01	512	Sewing mode 1 selected on the panel	MODE	0	0
M02	513	Sewing mode 2 selected on the panel	MODE	0	0
M03	514	Sewing mode 3 selected on the panel	MODE	0	0
M04	515	Sewing mode 4 selected on the panel	MODE	0	0
M05	516	Sewing mode 5 selected on the panel	MODE	0	0
M06	517	Sewing mode 6 selected on the panel	MODE	0	0
M07	518	Sewing mode 7 selected on the panel	MODE	0	0
M08	519	Sewing mode 8 selected on the panel	MODE	0	0
R001	768	Internal register	RGST	0	0
R002	769	Internal register	RGST	0	0
R003	770	Internal register	RGST	0	0
R004	771	Internal register	RGST	0	0
R005	772	Internal register	RGST	0	0
R006	773	Internal register	RGST	0	0
R007	774	Internal register	RGST	0	0
R008	775	Internal register	RGST	0	0
Y001	1280	State of output terminal	OUT	0	0
Y002	1281	State of output terminal	OUT	0	0
Y003	1282	State of output terminal	OUT	0	0
Y004	1283	State of output terminal	OUT	0	0
Y005	1284	State of output terminal	OUT	0	0
Y006	1285	State of output terminal	OUT	0	0
Y007	1286	State of output terminal	OUT	0	0
Y008	1287	State of output terminal	OUT	0	0
CN01	1	Stitch counter (small)	COUNT	0	99
CN16	16	Stitch counter	COUNT	0	9999
CN40	40	Piece counter	COUNT	0	65535
CN41	41	Bobbin counter	COUNT	0	0
ALL	1000	Always true: the step runs at every scan	ALL	0	0
S001	-32768	Step 1 is active	STEP	0	0
S002	-32767	Step 2 is active	STEP	0	0
S003	-32766	Step 3 is active	STEP	0	0
S004	-32765	Step 4 is active	STEP	0	0
S005	-32764	Step 5 is active	STEP	0	0
S006	-32763	Step 6 is active	STEP	0	0
S007	-32762	Step 7 is active	STEP	0	0
S008	-32761	Step 8 is active	STEP	0	0
S009	-32760	Step 9 is active	STEP	0	0
S010	-32759	Step 10 is active	STEP	0	0
S011	-32758	Step 11 is active	STEP	0	0
S012	-32757	Step 12 is active	STEP	0	0
S013	-32756	Step 13 is active	STEP	0	0
S014	-32755	Step 14 is active	STEP	0	0
S015	-32754	Step 15 is active	STEP	0	0
S016	-32753	Step 16 is active	STEP	0	0
S017	-32752	Step 17 is active	STEP	0	0
S018	-32751	Step 18 is active	STEP	0	0
S019	-32750	Step 19 is active	STEP	0	0
S020	-32749	Step 20 is active	STEP	0	0
S021	-32748	Step 21 is active	STEP	0	0
S022	-32747	Step 22 is active	STEP	0	0
S023	-32746	Step 23 is active	STEP	0	0
S024	-32745	Step 24 is active	STEP	0	0
S025	-32744	Step 25 is active	STEP	0	0
S026	-32743	Step 26 is active	STEP	0	0
S027	-32742	Step 27 is active	STEP	0	0
S028	-32741	Step 28 is active	STEP	0	0
S029	-32740	Step 29 is active	STEP	0	0
S030	-32739	Step 30 is active	STEP	0	0
S031	-32738	Step 31 is active	STEP	0	0
S032	-32737	Step 32 is active	STEP	0	0
