library ieee;
use ieee.std_logic_1164.all;
use ieee.vital_timing.all;

package cells_vital is
  constant lut_delay : VitalDelayType01 := (1.2 ns, 1.1 ns);
end package;
