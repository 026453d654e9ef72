MODEL	VKM-2300
NAME	VKM sewing controller, lock stitch
STEPS	32
