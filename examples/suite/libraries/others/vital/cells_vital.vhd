-- What the cells of a device take, for simulations that look at the time.
library ieee;
use ieee.std_logic_1164.all;

package cells_vital is
  -- until the output is 0, and until it is 1
  type cell_delay is array (std_ulogic range '0' to '1') of time;
  constant lut_delay : cell_delay := ('0' => 1.1 ns, '1' => 1.2 ns);
end package;
